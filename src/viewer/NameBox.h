#pragma once

#include <QComboBox>

namespace lumivane {

/// Shows the address of what is selected and takes one to go to; its list holds the names of the workbook.
class NameBox : public QComboBox
{
    Q_OBJECT

public:
    explicit NameBox(QWidget* parent = nullptr);

    void setNames(const QStringList& names);
    /// What is selected; shown unless the user is typing.
    void setPlace(const QString& text);
    void edit(); ///< for the keyboard

Q_SIGNALS:
    void placeEntered(const QString& text);
    void left(); ///< by Escape

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_place;
};

} // namespace lumivane
