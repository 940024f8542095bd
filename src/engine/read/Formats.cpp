#include "engine/read/Formats.h"

#include "engine/read/FileKind.h"
#include "engine/read/csv/CsvReader.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/xlsx/XlsxReader.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

struct Format
{
    FileKind kind;
    QLatin1StringView name;                                     ///< of a file in it, for the sentence that refuses one
    std::unique_ptr<FormatReader> (*open)(const QString& path); ///< null: there is no reader
};

template <class Reader>
std::unique_ptr<FormatReader> opened(const QString& path)
{
    return std::make_unique<Reader>(path);
}

constexpr Format formats[] = {
    {FileKind::Xlsx, "a workbook (xlsx)"_L1, opened<XlsxReader>},
    {FileKind::Text, "a text file"_L1, opened<CsvReader>},
    {FileKind::Xlsb, "a binary workbook (xlsb)"_L1, nullptr},
    {FileKind::OpenDocument, "an OpenDocument file"_L1, nullptr},
    {FileKind::OldBinary, "an old binary workbook (xls)"_L1, nullptr},
};

} // namespace

std::unique_ptr<FormatReader> openFormat(const QString& path)
{
    const FileKind kind = fileKind(path);
    const Format& format = *std::find_if(std::begin(formats), std::end(formats),
                                         [kind](const Format& candidate) { return candidate.kind == kind; });
    if (!format.open)
        throw Fault{u"it is %1, which is not read by the built-in reader; save it as xlsx"_s.arg(format.name),
                    ReadCause::FormatNotRead};
    return format.open(path);
}

} // namespace lumivane::engine
