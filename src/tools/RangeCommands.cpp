#include "engine/draw/SheetPainter.h"
#include "host/Host.h"
#include "host/embedded/EmbeddedHost.h"
#include "platform/ApplicationInfo.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"
#include "tools/Commands.h"
#include "tools/OpenProject.h"
#include "tools/Output.h"
#include "tools/WorkbookArguments.h"

#include <QJsonObject>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double leastScale = 0.25, mostScale = 8;

CellArea areaArgument(const QString& text)
{
    const auto area = CellArea::parse(text);
    if (!area)
        throw UsageError(u"%1 is no range such as A1:C9."_s.arg(text));
    return *area;
}

/// As LibreOffice Calc would draw it, which leaves out the grid lines.
QImage comparisonPicture(const QString& path, const QString& sheetName, const CellArea& area, double scale)
{
    const auto file = processContentCache().open(path);
    const auto sheet = std::make_shared<engine::ShownSheet>(file->content(),
                                                            file->sheet(sheetIndex(*file->content(), path, sheetName)),
                                                            nullptr, engine::WorkbookFile::sheetsOf(file));
    return engine::SheetPainter(sheet, engine::Metrics::Calc).image(area, scale);
}

/// A picture with a gap must not pass for a whole one.
void printUndrawn(const std::vector<Undrawn>& undrawn)
{
    for (const QString& sentence : undrawnSentences(undrawn))
        printError(sentence);
}

} // namespace

int renderCommand(const CommandLine& line)
{
    requireEmbedded(line);
    const CellArea area = areaArgument(line.argument(2));
    const double scale = line.number(u"scale"_s, 1, leastScale, mostScale);
    const SheetArgument opened(line.argument(0), line.argument(1));
    const QImage picture = comparesWithCalc(line) ? comparisonPicture(line.argument(0), line.argument(1), area, scale)
                                                  : opened.sheet().CopyPicture(area, scale);
    writePicture(picture, line.argument(3));
    printUndrawn(opened.sheet().undrawn(area));
    return 0;
}

int renderChartCommand(const CommandLine& line)
{
    requireEmbedded(line);
    const double scale = line.number(u"scale"_s, 1, leastScale, mostScale);
    const SheetArgument opened(line.argument(0), line.argument(1));
    writePicture(opened.sheet().CopyShapePicture(line.argument(2), scale), line.argument(3));
    printUndrawn(opened.sheet().undrawnOfShape(line.argument(2)));
    return 0;
}

int locateCommand(const CommandLine& line)
{
    useProgramFolder(line.option(u"home"_s)); // its settings say how far panels may reach
    const SheetArgument opened(line.argument(0), line.argument(1));
    clsWorkspacePanel panel;
    panel.ContentType = u"S"_s;
    panel.SheetName = line.argument(1);
    panel.PicRange = line.option(u"pic-range"_s);
    panel.RelativeTo = line.option(u"relative-to"_s);
    panel.ContentMatch = line.option(u"content-match"_s);
    if (line.flag(u"adjust"_s))
        panel.AdjustAll(opened.sheet());
    else
        panel.GetAdjRange(opened.sheet());
    QJsonObject result{{u"range"_s, panel.adjMovRange()},
                       {u"anchor"_s, panel.NewCell},
                       {u"row_offset"_s, panel.rowOffset()},
                       {u"column_offset"_s, panel.columnOffset()}};
    if (line.flag(u"adjust"_s)) {
        result.insert(u"pic_range"_s, panel.PicRange);
        result.insert(u"content_match"_s, panel.ContentMatch);
    }
    printJson(result);
    return 0;
}

} // namespace lumivane
