#include "sharing/DashboardListBox.h"

#include "platform/ShownText.h"

#include <QListWidget>

namespace lumivane {

void ListAddItem(QListWidget& List, const QString& Text, qint32 Data)
{
    auto* item = new QListWidgetItem(shownName(Text), &List);
    item->setData(Qt::UserRole, Data);
}

void ListSelectByData(QListWidget& List, qint32 Data)
{
    List.setCurrentRow(-1);
    for (int i = 0; i < List.count(); ++i) {
        if (List.item(i)->data(Qt::UserRole).toInt() == Data) {
            List.setCurrentRow(i, QItemSelectionModel::Select);
            List.scrollToItem(List.item(i));
            return;
        }
    }
}

std::vector<qint32> SelectedIDs(const QListWidget& List)
{
    std::vector<qint32> ids;
    for (int i = 0; i < List.count(); ++i) {
        if (List.item(i)->isSelected())
            ids.push_back(List.item(i)->data(Qt::UserRole).toInt());
    }
    return ids;
}

} // namespace lumivane
