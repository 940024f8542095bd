#pragma once

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace lumivane::test {

/// Does something with the dialog that the next command shows.
template <class Dialog>
void whenShown(std::function<void(Dialog&)> act)
{
    QTimer::singleShot(0, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog) << "another dialog, or none, was shown";
        act(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

template <class Widget>
Widget& control(const QWidget& form, const QString& name)
{
    auto* found = form.findChild<Widget*>(name);
    if (!found)
        qFatal("%s has no %s", qPrintable(form.objectName()), qPrintable(name));
    return *found;
}

inline void clickOn(const QWidget& form, const QString& button)
{
    control<QPushButton>(form, button).click();
}

} // namespace lumivane::test
