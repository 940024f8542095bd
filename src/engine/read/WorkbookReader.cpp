#include "engine/read/WorkbookReader.h"

#include "engine/read/Fault.h"
#include "engine/read/FileKind.h"
#include "engine/read/csv/CsvWorkbook.h"
#include "engine/read/xlsx/XlsxWorkbook.h"
#include "platform/Clock.h"
#include "platform/FileStamp.h"
#include "platform/RuntimeError.h"

#include <QFile>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxTextFile = 256 << 20;

std::shared_ptr<WorkbookContent> readTextFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Fault{u"it cannot be opened (%1)"_s.arg(file.errorString())};
    if (file.size() > maxTextFile)
        throw Fault{u"it is a text of more than %1 MB"_s.arg(maxTextFile >> 20)};
    return std::make_shared<CsvWorkbook>(path, file.read(file.size()).toStdString(), Clock::now().date().year());
}

std::shared_ptr<WorkbookContent> readByContent(const QString& path)
{
    switch (fileKind(path)) {
    case FileKind::Package:
        return std::make_shared<XlsxWorkbook>(path);
    case FileKind::Text:
        break;
    }
    return readTextFile(path);
}

} // namespace

std::shared_ptr<WorkbookContent> readWorkbook(const QString& path)
{
    if (FileStamp::of(path).size < 0)
        throw RuntimeError(RuntimeError::FileNotFound, u"The workbook \"%1\" was not found."_s.arg(path));
    try {
        return readByContent(path);
    } catch (const Fault& fault) {
        const QString sentence = u"The workbook \"%1\" cannot be read: %2."_s.arg(path, fault.what);
        if (fault.otherFormat)
            throw FormatNotRead(RuntimeError::ApplicationDefined, sentence);
        throw RuntimeError(RuntimeError::ApplicationDefined, sentence);
    }
}

} // namespace lumivane::engine
