#include "dashboard/WindowPlace.h"

#include "services/modUtilsINI.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QWidget>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString placeSection = u"Session"_s;
const QString placeKey = u"Window"_s;
constexpr QSize smallestWindow(320, 200);

/// "left,top,width,height,maximized"; an empty rectangle for anything else.
QRect readPlace(const QString& text, bool& maximized)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 5)
        return {};
    int numbers[5];
    for (int i = 0; i < 5; ++i) {
        bool isNumber = false;
        numbers[i] = parts[i].toInt(&isNumber);
        if (!isNumber || qAbs(numbers[i]) > 100000)
            return {};
    }
    maximized = numbers[4] != 0;
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

bool canBeSeen(const QRect& place)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry().intersected(place);
        if (seen.width() >= smallestWindow.width() / 2 && seen.height() >= smallestWindow.height() / 2)
            return true;
    }
    return false;
}

} // namespace

void restoreWindowPlace(QWidget& window)
{
    bool maximized = false;
    const QRect place = readPlace(GetIniString(GetIniFile(), placeSection, placeKey, QString()), maximized);
    if (place.width() >= smallestWindow.width() && place.height() >= smallestWindow.height() && canBeSeen(place)) {
        window.setGeometry(place);
    } else {
        // A dashboard wants room. The size counts where no window manager obeys the state.
        window.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
        maximized = true;
    }
    if (maximized)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void storeWindowPlace(const QWidget& window)
{
    const QRect place = window.isMaximized() ? window.normalGeometry() : window.geometry();
    SetIniString(GetIniFile(), placeSection, placeKey,
                 u"%1,%2,%3,%4,%5"_s.arg(place.x())
                     .arg(place.y())
                     .arg(place.width())
                     .arg(place.height())
                     .arg(window.isMaximized() ? 1 : 0));
}

} // namespace lumivane
