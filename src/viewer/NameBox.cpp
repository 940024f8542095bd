#include "viewer/NameBox.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace lumivane {

using namespace Qt::StringLiterals;

NameBox::NameBox(QWidget* parent) : QComboBox(parent)
{
    setObjectName(u"nameBox"_s);
    setAccessibleName(u"Selected cells, or an address or name to go to"_s);
    setToolTip(u"Selected cells. Type an address or a name to go there (Ctrl+G)"_s);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setFixedWidth(170);
    connect(this, &QComboBox::activated, this, [this](int index) { Q_EMIT placeEntered(itemText(index)); });
}

void NameBox::setNames(const QStringList& names)
{
    clear();
    addItems(names);
    setCurrentIndex(-1);
    setEditText(m_place);
}

void NameBox::setPlace(const QString& text)
{
    m_place = text;
    setEditText(text);
    lineEdit()->setCursorPosition(0);
}

void NameBox::edit()
{
    setFocus(Qt::ShortcutFocusReason);
    lineEdit()->selectAll();
}

void NameBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT placeEntered(currentText());
    } else if (event->key() == Qt::Key_Escape) {
        setPlace(m_place);
        Q_EMIT left();
    } else {
        QComboBox::keyPressEvent(event);
    }
}

} // namespace lumivane
