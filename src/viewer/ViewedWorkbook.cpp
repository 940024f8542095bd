#include "viewer/ViewedWorkbook.h"

#include "host/embedded/EmbeddedHost.h"
#include "platform/RuntimeError.h"

#include <QFileInfo>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

ViewedWorkbook::ViewedWorkbook(const QString& path)
    : m_path(QFileInfo(path).absoluteFilePath()), m_file(processContentCache().open(m_path))
{
}

QString ViewedWorkbook::name() const
{
    return QFileInfo(m_path).fileName();
}

std::vector<int> ViewedWorkbook::visibleSheets() const
{
    std::vector<int> indices;
    for (size_t i = 0; i < content()->sheets.size(); ++i) {
        if (content()->sheets[i].visible)
            indices.push_back(static_cast<int>(i));
    }
    return indices;
}

int ViewedWorkbook::indexOf(const QString& sheetName) const
{
    return content()->sheetStoredAs(sheetName);
}

int ViewedWorkbook::firstSheetToShow() const
{
    const auto& sheets = content()->sheets;
    const auto canBeShown = [](const SheetEntry& entry) { return entry.visible && !entry.isChartSheet; };
    const int active = content()->activeSheet;
    if (active >= 0 && active < static_cast<int>(sheets.size()) && canBeShown(sheets[static_cast<size_t>(active)]))
        return active;
    const auto place = std::find_if(sheets.begin(), sheets.end(), canBeShown);
    return place == sheets.end() ? -1 : static_cast<int>(place - sheets.begin());
}

std::shared_ptr<const ViewedSheet> ViewedWorkbook::sheet(int index)
{
    if (entry(index).isChartSheet)
        throw RuntimeError(
            RuntimeError::ApplicationDefined,
            u"The sheet \"%1\" of workbook \"%2\" is a chart without cells, which cannot be shown here."_s.arg(
                entry(index).name, name()));
    auto& sheet = m_sheets[index];
    if (!sheet)
        sheet = std::make_shared<ViewedSheet>(content(), m_file->sheet(index), WorkbookFile::sheetsOf(m_file));
    return sheet;
}

} // namespace lumivane
