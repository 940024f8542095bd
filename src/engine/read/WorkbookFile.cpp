#include "engine/read/WorkbookFile.h"

#include "engine/read/Formats.h"

#include <new>
#include <optional>
#include <stdexcept>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// What went wrong in a reader's work, if anything did. Bounds keep memory in its limits on most machines; on a small
/// one it may end before.
template <class Work>
std::optional<Fault> faultOf(Work work)
{
    const Fault noMemory{u"there is not enough memory for it"_s, ReadCause::TooLarge};
    try {
        work();
    } catch (const Fault& fault) {
        return fault;
    } catch (const std::bad_alloc&) {
        return noMemory;
    } catch (const std::length_error&) {
        return noMemory;
    }
    return std::nullopt;
}

} // namespace

WorkbookFile::WorkbookFile(const QString& path, qint64 maxBytes)
    : m_path(path), m_maxBytes(maxBytes), m_stamp(FileStamp::of(path))
{
    if (m_stamp.size < 0)
        throw ReadError(ReadCause::NotFound, u"The workbook \"%1\" was not found."_s.arg(path));
    const std::optional<Fault> fault = faultOf([this] {
        m_reader = openFormat(m_path);
        m_content = std::make_shared<const WorkbookContent>(m_reader->readWorkbook(m_sheets, m_maxBytes));
        m_sheets.resize(m_content->sheets.size());
    });
    if (fault)
        throw ReadError(fault->cause, u"The workbook \"%1\" cannot be read: %2."_s.arg(path, fault->what));
}

std::shared_ptr<WorkbookFile> WorkbookFile::open(const QString& path, qint64 maxBytes)
{
    return std::shared_ptr<WorkbookFile>(new WorkbookFile(path, maxBytes));
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
    dropUnused();
    std::shared_ptr<const SheetContent> sheet;
    std::optional<Fault> fault = faultOf([&] { sheet = m_reader->readSheet(*m_content, index, m_maxBytes - bytes()); });
    if (FileStamp::of(m_path) != m_stamp)
        fault = Fault{u"the file has changed since it was opened; open it again"_s, ReadCause::Changed};
    if (fault)
        throw ReadError(fault->cause, u"Sheet \"%1\" of the workbook \"%2\" cannot be read: %3."_s.arg(
                                          m_content->sheets[static_cast<size_t>(index)].name, m_path, fault->what));
    return sheet;
}

std::function<std::shared_ptr<const SheetContent>(int)> WorkbookFile::sheetsOf(std::shared_ptr<WorkbookFile> file)
{
    return [file = std::move(file)](int index) -> std::shared_ptr<const SheetContent> {
        try {
            return file->sheet(index);
        } catch (const ReadError&) {
            return nullptr;
        }
    };
}

/// Makes room for a further sheet, so that those of a large workbook can be shown one after the other.
void WorkbookFile::dropUnused()
{
    if (bytes() < m_maxBytes / 2)
        return;
    for (auto& sheet : m_sheets) {
        if (sheet.use_count() == 1)
            sheet.reset();
    }
}

qint64 WorkbookFile::bytes() const
{
    qint64 sum = qint64(sizeof(*this)) + m_content->bytes();
    for (const auto& sheet : m_sheets)
        sum += sheet ? sheet->bytes() : 0;
    return sum;
}

} // namespace lumivane::engine
