#include "dashboard/DashboardArea.h"
#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class EmptyDashboard : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        start();
        showWorkbooks();
    }

    /// Drags files over the window and, where they are taken, drops them.
    bool drop(const QStringList& paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(path.contains(u"://"_s) ? QUrl(path) : QUrl::fromLocalFile(path));
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(&window(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropped(QPointF(300, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &dropped);
        QCoreApplication::processEvents();
        return true;
    }
};

TEST_F(EmptyDashboard, DroppedWorkbooksAreOpenedInTheirOrderAndOneThatCannotBeReadIsTold)
{
    const QString sales = addBook(u"sales.xlsx"_s), cash = addBook(u"cash.xlsx"_s);
    EXPECT_TRUE(drop({writeFile(u"broken.xlsx"_s, "none"), sales, cash}));
    const qsizetype first = m_library.events.indexOf(u"open "_s + sales);
    EXPECT_GE(first, 0);
    EXPECT_LT(first, m_library.events.indexOf(u"open "_s + cash));
    EXPECT_EQ(m_user.shown.size(), 1);
}

TEST_F(EmptyDashboard, WhatIsNoWorkbookIsRefusedBeforeItIsDropped)
{
    const QString sales = addBook(u"sales.xlsx"_s);
    const QString picture = writeFile(u"chart.png"_s, "\x89PNG\r\n\x1a\n");
    for (const QStringList& files :
         {QStringList{sales, picture}, QStringList{m_folder.path()}, QStringList{u"https://example.org/sales.xlsx"_s},
          QStringList{m_folder.filePath(u"gone.xlsx"_s)}, QStringList()})
        EXPECT_FALSE(drop(files)) << files.join(u' ').toStdString();
    EXPECT_EQ(openings(sales), 0);
}

TEST_F(EmptyDashboard, TheHintCanBeReadOnEveryBackground)
{
    const auto brightness = [](const QColor& color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF()) + 0.05;
    };
    for (QRgb rgb = 0; rgb < 0x1000000; rgb += 0x1F3D5) {
        const QColor ground = QColor::fromRgb(rgb);
        const double a = brightness(ground), b = brightness(readableOn(ground));
        EXPECT_GE(std::max(a, b) / std::min(a, b), 4.5) << ground.name().toStdString();
    }
}

TEST_F(EmptyDashboard, TheHintIsShownOnlyWithoutPanels)
{
    storeDashboard(u"Evening"_s, {u"Two"_s});
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    auto& area = *window().findChild<DashboardArea*>();
    EXPECT_TRUE(area.accessibleDescription().startsWith(u"Open a workbook, select a range and paste it here"_s));
    const auto coloursBelowThePanel = [&area] {
        const QImage ground = area.viewport()->grab(QRect(0, area.height() / 2 - 40, area.width(), 80)).toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < ground.height(); ++y) {
            for (int x = 0; x < ground.width(); ++x)
                colours.insert(ground.pixel(x, y));
        }
        return colours.size();
    };
    EXPECT_EQ(coloursBelowThePanel(), 1) << "plain ground";
    window().panelWindows().first()->Unload();
    EXPECT_EQ(coloursBelowThePanel(), 1) << "a panel without a window, as while it is loaded";
    list().setCurrentText(u"Evening"_s);
    window().Panel_Remove(*window().panelWindows().first(), false);
    EXPECT_GT(coloursBelowThePanel(), 1);
}

} // namespace
