#pragma once

#include <QString>

class QComboBox;

namespace lumivane {

// List controls whose entries carry a number. Selecting an entry by code raises the same change as the user's choice.

void ComboAddItem(QComboBox& Combo, const QString& Text, qint32 Data);
/// Takes the selection away, then selects the first entry with that number; none stays selected where there is none.
void ComboSelectByData(QComboBox& Combo, qint32 Data);
/// The same by the text of the entry, blanks around it and case aside.
void ComboSelectByText(QComboBox& Combo, const QString& Text);
/// The number of the selected entry, 0 where it carries none or none is selected.
qint32 ComboSelectedData(const QComboBox& Combo);
/// True, with a beep, for text typed into a name that must not stand in one.
bool RejectNameChars(const QString& typed);

} // namespace lumivane
