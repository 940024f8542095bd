#include "panel/PanelPicture.h"

#include "panel/Twips.h"
#include "platform/RuntimeError.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QSaveFile>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int pathFileAccessError = 75;
constexpr int invalidPicture = 481;
constexpr double dotsPerMetreAtScaleOne = 96 / 0.0254;
/// Largest picture that is read, in megabytes of memory: what a host draws at most, and some room.
constexpr int pictureMegabytes = 320;
constexpr qint64 longestNotice = 4000;
const QByteArray noticeMark = "\nlumivane notice\n";

QImage readPicture(QIODevice& device, const QString& file)
{
    QImageReader::setAllocationLimit(pictureMegabytes);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    QImage image = reader.read();
    if (image.isNull())
        throw RuntimeError(invalidPicture,
                           u"[%1] is not a picture that can be shown (%2)."_s.arg(file, reader.errorString()));
    return image;
}

void openForReading(QFile& device)
{
    if (!device.exists())
        throw RuntimeError(RuntimeError::FileNotFound, u"The picture [%1] was not found."_s.arg(device.fileName()));
    if (!device.open(QIODevice::ReadOnly))
        throw RuntimeError(pathFileAccessError,
                           u"The picture [%1] cannot be read: %2"_s.arg(device.fileName(), device.errorString()));
}

/// Scales come in hundredths: the resolution is kept in whole dots to the metre, which would otherwise give 1.9999.
double scaleOfResolution(int dotsPerMetre)
{
    const double scale = std::round(dotsPerMetre / dotsPerMetreAtScaleOne * 100) / 100;
    return scale > 1 && scale <= 8 ? scale : 1;
}

QString noticeAtEnd(QFile& device)
{
    const qint64 tail = qMin(device.size(), 4 * longestNotice + noticeMark.size());
    if (!device.seek(device.size() - tail))
        return {};
    const QByteArray bytes = device.read(tail);
    const qsizetype mark = bytes.lastIndexOf(noticeMark);
    return mark < 0 ? QString() : QString::fromUtf8(bytes.mid(mark + noticeMark.size()));
}

} // namespace

TwipsSize PanelPicture::size() const
{
    const QSizeF pixels = image.deviceIndependentSize();
    return {toTwips(pixels.width()), toTwips(pixels.height())};
}

PanelPicture loadPictureFile(const QString& file)
{
    QFile device(file);
    openForReading(device);
    return {readPicture(device, file), QString()};
}

PanelPicture loadCachedPicture(const QString& file)
{
    QFile device(file);
    openForReading(device);
    PanelPicture picture;
    picture.image = readPicture(device, file);
    picture.image.setDevicePixelRatio(scaleOfResolution(picture.image.dotsPerMeterX()));
    picture.notice = noticeAtEnd(device);
    return picture;
}

void saveCachedPicture(const PanelPicture& picture, const QString& file)
{
    QImage image = picture.image.convertToFormat(QImage::Format_RGB32);
    const int dotsPerMetre = qRound(dotsPerMetreAtScaleOne * picture.image.devicePixelRatio());
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.setDevicePixelRatio(1);

    QSaveFile device(file);
    bool written = device.open(QIODevice::WriteOnly) && image.save(&device, "BMP");
    if (written && !picture.notice.isEmpty()) {
        const QByteArray tail = noticeMark + picture.notice.left(longestNotice).toUtf8();
        written = device.write(tail) == tail.size();
    }
    if (!written || !device.commit())
        throw RuntimeError(pathFileAccessError,
                           u"The picture of the panel cannot be kept in [%1]: %2"_s.arg(file, device.errorString()));
}

} // namespace lumivane
