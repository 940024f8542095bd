#include "DemoPlan.h"

using namespace Qt::StringLiterals;

namespace lumivane::demo {

QList<SourcePlan> sourcePlans()
{
    return {
        {u"sales"_s, u"Regional sales 2026-10-12.xlsx"_s, u"Regional sales *.xlsx"_s, u"folder"_s},
        {u"production"_s, u"Production report 2026-10-12.xlsx"_s, u"Production report *.xlsx"_s, u"folder"_s},
        {u"budget"_s, u"Budget 2026.xlsx"_s, u"Budget 2026.xlsx"_s, u"folder"_s},
        {u"prices"_s, u"Price list.csv"_s, u"Price list.csv"_s, u"folder"_s},
        {u"cash"_s, u"Cash position.xlsx"_s, u"Cash position.xlsx"_s, u"default"_s},
        {u"service"_s, u"Service desk.xlsx"_s, u"Service desk.xlsx"_s, u"default"_s},
    };
}

QList<PanelPlan> panelPlans()
{
    const QString operations = u"Operations"_s, management = u"Management"_s, whole = u"$A$1:$Z$60"_s;
    return {
        {operations, u"Production, end of week"_s, u"production"_s, u"Lines"_s, u"$F$10:$J$22"_s,
         u"$A$4:$B$4`$C$4:$J$4`$A$5:$B$60`$C$5:$J$60"_s, u"contents"_s, u"$A22"_s, u"Plant total"_s, u"A"_s,
         QRect(12, 12, 600, 180)},
        {operations,
         u"Latest prices"_s,
         u"prices"_s,
         u"Price list"_s,
         u"$A$9:$E$16"_s,
         u"$A$1:$E$1`$A$2:$E$40"_s,
         u"bottom"_s,
         {},
         {},
         u"C"_s,
         QRect(12, 224, 600, 236)},
        {operations,
         u"Service desk today"_s,
         u"service"_s,
         u"Board"_s,
         u"$A$4:$D$5"_s,
         whole,
         u"top"_s,
         {},
         {},
         u"A"_s,
         QRect(640, 12, 470, 110)},
        {operations,
         u"Tickets by priority"_s,
         u"service"_s,
         u"Board"_s,
         u"$A$7:$D$12"_s,
         whole,
         u"top"_s,
         {},
         {},
         u"Z"_s,
         QRect(640, 140, 690, 220)},
        {operations, u"Sales so far"_s, u"sales"_s, u"Daily"_s, u"$A$30:$H$30"_s, u"$A$4:$H$4`$A$5:$H$60"_s,
         u"contents"_s, u"$A30"_s, u"Total"_s, u"C"_s, QRect(640, 378, 690, 94)},
        {management,
         u"Latest trading days"_s,
         u"sales"_s,
         u"Daily"_s,
         u"$A$19:$H$30"_s,
         u"$A$4:$H$4`$A$5:$H$60"_s,
         u"bottom"_s,
         {},
         {},
         u"C"_s,
         QRect(12, 12, 664, 314)},
        {management,
         u"Plan attainment"_s,
         u"sales"_s,
         u"Attainment"_s,
         u"$A$4:$E$10"_s,
         whole,
         u"top"_s,
         {},
         {},
         u"Z"_s,
         QRect(690, 12, 650, 236)},
        {management, u"Cash this week and next"_s, u"cash"_s, u"Weeks"_s, u"$D$4:$G$12"_s, u"$A$1:$A$40`$B$1:$Z$40"_s,
         u"contents"_s, u"D$5"_s, u"This week"_s, u"C"_s, QRect(690, 262, 650, 230)},
        {management, u"Liquidity reserve"_s, u"cash"_s, u"Accounts"_s, u"$A$12:$D$16"_s, whole, u"contents"_s,
         u"$A12"_s, u"Liquidity reserve"_s, u"A"_s, QRect(690, 506, 650, 130)},
        {management,
         u"Budget"_s,
         u"budget"_s,
         u"Budget"_s,
         u"$A$4:$E$14"_s,
         whole,
         u"top"_s,
         {},
         {},
         u"Z"_s,
         QRect(12, 340, 664, 280)},
    };
}

QList<WidthPlan> widthPlans()
{
    return {{u"prices"_s, u"A:A"_s, 14}, {u"prices"_s, u"B:B"_s, 24}, {u"prices"_s, u"C:E"_s, 10}};
}

QList<ThresholdPlan> thresholdPlans()
{
    // The last trading day's sales, and those of all days: both lie further down in each version.
    return {{u"Latest trading days"_s, u"G29"_s, u"<500"_s, false},
            {u"Latest trading days"_s, u"G30"_s, u">18000"_s, true}};
}

} // namespace lumivane::demo
