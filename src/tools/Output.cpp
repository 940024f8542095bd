#include "tools/Output.h"

#include "platform/RuntimeError.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <cstdio>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void printBytes(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

} // namespace

void printJson(const QJsonObject& object)
{
    printBytes(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void printJson(const QJsonArray& array)
{
    printBytes(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

void printLine(const QString& line)
{
    printBytes(line.toUtf8());
}

void writePicture(const QImage& picture, const QString& file)
{
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !picture.save(&target, "PNG") || !target.commit())
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The picture %1 cannot be written: %2."_s.arg(file, target.errorString()));
}

} // namespace lumivane
