#include "sharing/DashboardListBox.h"

#include "platform/Prompts.h"
#include "session/modMain.h"

#include <QListWidget>
#include <QPushButton>

namespace lumivane {

void ListAddItem(QListWidget& List, const QString& Text, qint32 Data)
{
    auto* item = new QListWidgetItem(Text, &List);
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

void explainOnClick(QPushButton& button, const QString& explanation)
{
    QObject::connect(&button, &QPushButton::clicked, &button,
                     [explanation] { prompts().message(explanation, Prompts::Icon::Information); });
}

} // namespace lumivane
