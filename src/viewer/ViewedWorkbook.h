#pragma once

#include "engine/read/WorkbookFile.h"
#include "viewer/ViewedSheet.h"

#include <map>

namespace lumivane {

/// A workbook as a window has it open: what its file held when it was read.
class ViewedWorkbook
{
public:
    /// Reads the file; throws as the engine does, with a sentence that names it.
    explicit ViewedWorkbook(const QString& path);

    const QString& path() const { return m_path; }
    QString name() const;
    const FileStamp& stamp() const { return m_file->stamp(); } ///< of the file as it was read
    const std::shared_ptr<engine::WorkbookFile>& file() const { return m_file; }
    const std::shared_ptr<const engine::WorkbookContent>& content() const { return m_file->content(); }

    /// Indices of the sheets that have a tab.
    std::vector<int> visibleSheets() const;
    const engine::SheetEntry& entry(int index) const { return content()->sheets[static_cast<size_t>(index)]; }
    /// By a stored name; -1 if there is none.
    int indexOf(const QString& sheetName) const;
    /// The sheet that the file was saved with in front, or the first visible worksheet in its place; -1 without any.
    int firstSheetToShow() const;
    /// Read now if it was not yet; throws when it cannot be read or is a chart sheet.
    std::shared_ptr<const ViewedSheet> sheet(int index);

private:
    QString m_path;
    std::shared_ptr<engine::WorkbookFile> m_file;
    std::map<int, std::shared_ptr<const ViewedSheet>> m_sheets;
};

} // namespace lumivane
