#pragma once

#include "sharing/DashboardList.h"

class QListWidget;

namespace lumivane {

// What the dialogs for sharing have in common.

/// An entry that carries a number.
void ListAddItem(QListWidget& List, const QString& Text, qint32 Data);
/// Marks the first entry with that number as selected, beside those that are; none where there is none.
void ListSelectByData(QListWidget& List, qint32 Data);
/// The numbers of the selected entries, in the order of the list.
std::vector<qint32> SelectedIDs(const QListWidget& List);

} // namespace lumivane
