#include "engine/read/WorkbookFile.h"

#include "engine/read/Formats.h"
#include "engine/read/RowBuilder.h"

namespace lumivane::engine {

using namespace Qt::StringLiterals;

WorkbookFile::WorkbookFile(const QString& path) : m_path(path), m_stamp(FileStamp::of(path))
{
    if (m_stamp.size < 0)
        throw ReadError(ReadCause::NotFound, u"The workbook \"%1\" was not found."_s.arg(path));
    try {
        m_reader = openFormat(path);
        m_content = std::make_shared<const WorkbookContent>(m_reader->readWorkbook(m_sheets));
        m_sheets.resize(m_content->sheets.size());
    } catch (const Fault& fault) {
        throw ReadError(fault.cause, u"The workbook \"%1\" cannot be read: %2."_s.arg(path, fault.what));
    }
}

std::shared_ptr<WorkbookFile> WorkbookFile::open(const QString& path)
{
    return std::shared_ptr<WorkbookFile>(new WorkbookFile(path));
}

std::shared_ptr<const SheetContent> WorkbookFile::sheet(int index)
{
    if (index < 0 || index >= static_cast<int>(m_sheets.size()))
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    std::shared_ptr<const SheetContent>& sheet = m_sheets[static_cast<size_t>(index)];
    if (!sheet)
        sheet = readSheet(index);
    return sheet;
}

/// The reader opens the file by its path, so only afterwards it is certain which file that was.
std::shared_ptr<const SheetContent> WorkbookFile::readSheet(int index)
{
    std::shared_ptr<const SheetContent> sheet;
    Fault fault;
    try {
        sheet = m_reader->readSheet(*m_content, index, maxWorkbookBytes - bytes());
    } catch (const Fault& found) {
        fault = found;
    }
    if (FileStamp::of(m_path) != m_stamp)
        fault = {u"the file has changed since it was opened; open it again"_s, ReadCause::Changed};
    if (!fault.what.isEmpty())
        throw ReadError(fault.cause, u"Sheet \"%1\" of the workbook \"%2\" cannot be read: %3."_s.arg(
                                         m_content->sheets[static_cast<size_t>(index)].name, m_path, fault.what));
    return sheet;
}

qint64 WorkbookFile::bytes() const
{
    qint64 sum = qint64(sizeof(*this)) + m_content->bytes();
    for (const auto& sheet : m_sheets)
        sum += sheet ? sheet->bytes() : 0;
    return sum;
}

} // namespace lumivane::engine
