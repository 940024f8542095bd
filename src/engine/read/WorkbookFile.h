#pragma once

#include "engine/read/FormatReader.h"
#include "engine/read/RowBuilder.h"
#include "engine/read/package/ReadError.h"
#include "platform/FileStamp.h"

#include <functional>

namespace lumivane::engine {

/// A workbook file as it was when it was opened. Its sheets are read when first asked for; in between the file is
/// closed, so that nobody is kept from replacing it. Shared between all who show it.
class WorkbookFile
{
public:
    /// Reads all but the sheets; these and the rest may take `maxBytes` together. What the file is, is seen from its
    /// bytes, never from its name. Throws ReadError.
    static std::shared_ptr<WorkbookFile> open(const QString& path, qint64 maxBytes = maxWorkbookBytes);

    const QString& path() const { return m_path; }
    const FileStamp& stamp() const { return m_stamp; }
    const std::shared_ptr<const WorkbookContent>& content() const { return m_content; }
    /// The sheet at an index from 0, read now if it was not yet. Throws ReadError, never gives half a sheet.
    std::shared_ptr<const SheetContent> sheet(int index);
    qint64 bytes() const; ///< memory held by all that was read

    /// Gives the sheets of a file by index, for what looks at several; null for one that cannot be read.
    static std::function<std::shared_ptr<const SheetContent>(int)> sheetsOf(std::shared_ptr<WorkbookFile> file);

private:
    WorkbookFile(const QString& path, qint64 maxBytes);
    std::shared_ptr<const SheetContent> readSheet(int index);
    void dropUnused();

    const QString m_path;
    const qint64 m_maxBytes;
    const FileStamp m_stamp;
    std::unique_ptr<FormatReader> m_reader;
    std::shared_ptr<const WorkbookContent> m_content;
    SheetList m_sheets;
};

} // namespace lumivane::engine
