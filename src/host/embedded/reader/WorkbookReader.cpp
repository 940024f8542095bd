#include "host/embedded/reader/WorkbookReader.h"

#include "host/embedded/reader/Fault.h"
#include "host/embedded/reader/FileStamp.h"
#include "host/embedded/reader/XlsxWorkbook.h"
#include "platform/RuntimeError.h"

#include <QFile>

namespace lumivane::embedded {

using namespace Qt::StringLiterals;

namespace {

QByteArray firstBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Fault{u"it cannot be opened (%1)"_s.arg(file.errorString())};
    return file.read(4096);
}

std::shared_ptr<WorkbookContent> readByContent(const QString& path)
{
    const QByteArray start = firstBytes(path);
    if (start.isEmpty())
        throw Fault{u"the file is empty"_s};
    if (start.startsWith("PK"))
        return std::make_shared<XlsxWorkbook>(path);
    throw Fault{u"its format is not known here"_s};
}

} // namespace

std::shared_ptr<WorkbookContent> readWorkbook(const QString& path)
{
    if (FileStamp::of(path).size < 0)
        throw RuntimeError(RuntimeError::FileNotFound, u"The workbook \"%1\" was not found."_s.arg(path));
    try {
        return readByContent(path);
    } catch (const Fault& fault) {
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The workbook \"%1\" cannot be read: %2."_s.arg(path, fault.what));
    }
}

} // namespace lumivane::embedded
