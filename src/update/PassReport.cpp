#include "update/PassReport.h"

#include <utility>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

int passes = 0; ///< one within another is part of the outer one
QStringList waiting;

void show(const QStringList& texts)
{
    if (!texts.isEmpty())
        prompts().message(texts.join(u"\r\n\r\n"_s), Prompts::Icon::Exclamation);
}

} // namespace

PassReport::PassReport()
{
    ++passes;
}

PassReport::~PassReport()
{
    // The box lets events run, and with them perhaps another pass.
    if (--passes == 0)
        show(std::exchange(waiting, {}));
}

void PassReport::add(const QString& text)
{
    if (passes == 0)
        show({text});
    else if (!waiting.contains(text))
        waiting.append(text);
}

HeldMessages::HeldMessages() : m_outer(prompts())
{
    setPrompts(this);
}

HeldMessages::~HeldMessages()
{
    setPrompts(&m_outer);
    // Together, as they belong to one workbook.
    const PassReport report;
    for (const QString& text : std::as_const(m_texts))
        PassReport::add(text);
}

void HeldMessages::message(const QString& text, Icon)
{
    m_texts.append(text);
}

} // namespace lumivane
