#include "platform/ShownText.h"

#include <QStringView>

namespace lumivane {

namespace {

QString withoutActing(QString text, QStringView kept)
{
    for (QChar& c : text) {
        if (isActing(c) && !kept.contains(c))
            c = u'?';
    }
    return text;
}

} // namespace

bool isActing(QChar character)
{
    const char16_t c = character.unicode();
    return character.category() == QChar::Other_Control || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

QString shownName(QString name)
{
    return withoutActing(std::move(name), {});
}

QString shownText(QString text)
{
    return withoutActing(std::move(text), u"\r\n\t");
}

} // namespace lumivane
