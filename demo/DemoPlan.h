#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace lumivane::demo {

/// A report behind panels of the demo.
struct SourcePlan
{
    QString key;
    QString firstFile;  ///< name of its first version
    QString mask;       ///< under which its versions are found
    QString updateType; ///< "folder": fetched from the incoming files; "default": written over in place
};

/// A panel as a user would have pasted it from the first version.
struct PanelPlan
{
    QString dashboard;
    QString caption;
    QString source; ///< key of its SourcePlan
    QString sheet;
    QString selection;
    QString panes; ///< visible ranges of the window's panes, joined by back-quotes
    QString rule;  ///< "top", "bottom", "contents"
    QString anchor;
    QString content;
    QString view;
    QRect window; ///< pixels on the dashboard
};

/// Columns that the user widened before pasting, as the file stores no widths.
struct WidthPlan
{
    QString source;
    QString columns;
    double characters;
};

/// A figure that is marked in a panel's picture when it passes a limit. None does in the first version.
struct ThresholdPlan
{
    QString panel; ///< caption
    QString cell;  ///< in the first version
    QString comparison;
    bool isHigh;
};

QList<SourcePlan> sourcePlans();
/// Dashboard by dashboard; the last one is the one that the program opens.
QList<PanelPlan> panelPlans();
QList<WidthPlan> widthPlans();
QList<ThresholdPlan> thresholdPlans();

} // namespace lumivane::demo
