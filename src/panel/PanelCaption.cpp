#include "panel/PanelCaption.h"

#include "platform/Checked.h"

#include <QLocale>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString markPrefix(PanelMark mark)
{
    switch (mark) {
    case PanelMark::Base:
        return u"*"_s;
    case PanelMark::Marked:
        return u"**"_s;
    case PanelMark::None:
        break;
    }
    return {};
}

} // namespace

QString panelCaptionText(const QString& caption, PanelMark mark, const std::optional<QDateTime>& stamp,
                         const QDateTime& now)
{
    const QString text = markPrefix(mark) + caption;
    if (!stamp)
        return text;
    const bool ofToday = stamp->date() == now.date();
    return text + u"   ("_s + QLocale::c().toString(*stamp, ofToday ? u"hh:mm AP"_s : u"MMM d"_s) + u')';
}

int centringBlanks(float clientWidth, int textWidth, int hundredBlanksWidth)
{
    if (hundredBlanksWidth == 0)
        return 0;
    const int gap = toStoredTwips(clientWidth / 2.0 - textWidth / 2.0);
    return toStoredTwips(100.0 / hundredBlanksWidth * gap);
}

} // namespace lumivane
