#include "controls/Look.h"
#include "controls/PanelStyle.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionTitleBar>
#include <QWindow>
#include <cmath>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

/// How well two colours can be told apart: 1 for the same colour, 21 for black and white.
double contrast(const QColor& a, const QColor& b)
{
    const auto luminance = [](const QColor& color) {
        const auto part = [](double share) {
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

/// The strongest contrast that the picture, laid on the ground, has to it.
double strongestContrast(const QImage& picture, const QColor& ground)
{
    QImage laid(picture.size(), QImage::Format_RGB32);
    laid.fill(ground);
    QPainter(&laid).drawImage(0, 0, picture);
    double strongest = 1;
    for (int y = 0; y < laid.height(); ++y) {
        for (int x = 0; x < laid.width(); ++x)
            strongest = qMax(strongest, contrast(laid.pixelColor(x, y), ground));
    }
    return strongest;
}

class Look : public testing::TestWithParam<bool>
{
protected:
    ~Look() override
    {
        QApplication::setStyle(new PanelStyle);
        qApp->setStyleSheet(QString());
        QApplication::setPalette(QPalette());
    }
};

TEST_F(Look, FollowsTheDesktopAtTheStartAndLater)
{
    // The desktop of the tests is a light one.
    applyLook(*qApp);
    EXPECT_FALSE(PanelStyle::isDark(QApplication::palette()));
    applyColors(*qApp, true);
    EXPECT_TRUE(PanelStyle::isDark(QApplication::palette()));
    EXPECT_TRUE(PanelStyle::isDark(QMenu().palette()));
    EXPECT_TRUE(PanelStyle::isDark(QDialog().palette()));

    QWindow window;
    QEvent changed(QEvent::ThemeChange);
    QCoreApplication::sendEvent(&window, &changed);
    EXPECT_FALSE(PanelStyle::isDark(QApplication::palette()));
    EXPECT_FALSE(PanelStyle::isDark(QMenu().palette()));
}

TEST_P(Look, EveryIconCanBeReadAndADisabledOneIsFainter)
{
    applyColors(*qApp, GetParam());
    const QColor ground = QApplication::palette().color(QPalette::Window);
    dashboardIcon(u"open"_s); // the drawings are there from the first icon on
    const QStringList names = QDir(u":/icons"_s).entryList({u"*.svg"_s});
    ASSERT_GT(names.size(), 20);
    for (const QString& name : names) {
        const QIcon icon = dashboardIcon(name.chopped(4));
        const auto drawn = [&](QIcon::Mode mode) { return icon.pixmap(QSize(22, 22), 1, mode).toImage(); };
        ASSERT_EQ(drawn(QIcon::Normal).size(), QSize(22, 22)) << name.toStdString();
        const double normal = strongestContrast(drawn(QIcon::Normal), ground);
        EXPECT_GT(normal, 3.0) << name.toStdString();
        EXPECT_LT(strongestContrast(drawn(QIcon::Disabled), ground), normal) << name.toStdString();
    }
}

TEST_P(Look, IconsAreSharpOnDenseScreens)
{
    applyColors(*qApp, GetParam());
    const QPixmap pixmap = dashboardIcon(u"save"_s).pixmap(QSize(22, 22), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(44, 44));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
}

TEST_P(Look, CaptionsOfPanelsCanBeReadInEveryState)
{
    QApplication::setStyle(new PanelStyle);
    applyColors(*qApp, GetParam());
    QMdiSubWindow panel;
    for (const PanelStyle::Frame mark :
         {PanelStyle::Frame::Plain, PanelStyle::Frame::Marked, PanelStyle::Frame::Base}) {
        for (const bool active : {true, false}) {
            panel.setProperty(PanelStyle::markProperty, static_cast<int>(mark));
            QStyleOptionTitleBar title;
            title.rect = QRect(0, 0, 160, 22);
            title.text = u"MMM"_s;
            title.titleBarState = active ? QStyle::State_Active : QStyle::State_None;
            QImage picture(title.rect.size(), QImage::Format_RGB32);
            QPainter painter(&picture);
            QApplication::style()->drawComplexControl(QStyle::CC_TitleBar, &title, &painter, &panel);
            painter.end();
            const QRect words = picture.rect().adjusted(6, 6, -60, -6);
            const QColor ground = picture.pixelColor(100, 11);
            EXPECT_GT(strongestContrast(picture.copy(words), ground), 4.5)
                << "mark " << static_cast<int>(mark) << (active ? ", active" : ", not active");
            EXPECT_EQ(ground.lightness() < 128, GetParam());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Desktops, Look, testing::Bool(), [](const auto& row) { return row.param ? "dark" : "light"; });

} // namespace
