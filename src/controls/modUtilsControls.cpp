#include "controls/modUtilsControls.h"

#include "platform/ShownText.h"

#include <QApplication>
#include <QComboBox>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

void ComboAddItem(QComboBox& Combo, const QString& Text, qint32 Data)
{
    Combo.addItem(shownName(Text), Data);
}

void ComboSelectByData(QComboBox& Combo, qint32 Data)
{
    Combo.setCurrentIndex(-1);
    Combo.setCurrentIndex(Combo.findData(Data));
}

void ComboSelectByText(QComboBox& Combo, const QString& Text)
{
    Combo.setCurrentIndex(-1);
    const QString wanted = Text.trimmed();
    for (int i = 0; i < Combo.count(); ++i) {
        if (Combo.itemText(i).trimmed().compare(wanted, Qt::CaseInsensitive) == 0) {
            Combo.setCurrentIndex(i);
            return;
        }
    }
}

qint32 ComboSelectedData(const QComboBox& Combo)
{
    return Combo.currentData().toInt();
}

bool RejectNameChars(const QString& typed)
{
    const bool rejected = std::ranges::any_of(typed, [](QChar c) { return u"'\"*+"_s.contains(c); });
    if (rejected)
        QApplication::beep();
    return rejected;
}

} // namespace lumivane
