#include "panel/PanelPicture.h"

#include "panel/PackedDrawing.h"
#include "panel/Twips.h"
#include "platform/RuntimeError.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QtEndian>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int pathFileAccessError = 75;
constexpr int invalidPicture = 481;
constexpr double dotsPerMetreAtScaleOne = 96 / 0.0254;
/// Largest picture that is read, in megabytes of memory: what a host draws at most, and some room.
constexpr int pictureMegabytes = 320;
constexpr qint64 mostPixels = pictureMegabytes * 1024 * 1024 / 4;
constexpr qint64 longestNotice = 4000;
const QByteArray detailsMark = "\nlumivane picture\n";
constexpr qint64 mostDetails = 1 << 20; ///< bytes

[[noreturn]] void refuseDrawing(const QString& file)
{
    throw RuntimeError(invalidPicture,
                       u"The drawing [%1] is damaged or too long to be shown: at most %2 MB of text are "
                       "read."_s.arg(file)
                           .arg(longestDrawing >> 20));
}

QImage readPicture(QIODevice& given, const QString& file)
{
    // Qt would inflate a packed drawing whole, whatever it comes to.
    QBuffer unpacked;
    const bool isPacked = isPackedDrawing(given);
    if (isPacked) {
        const auto text = unpackDrawing(given);
        if (!text)
            refuseDrawing(file);
        unpacked.setData(*text);
        unpacked.open(QIODevice::ReadOnly);
    }
    QIODevice& device = isPacked ? unpacked : given;

    QImageReader::setAllocationLimit(pictureMegabytes);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (reader.format() == "svg" && device.size() > longestDrawing)
        refuseDrawing(file);
    // Not every format keeps to the limit by itself, drawings made of lines least of all.
    if (const QSize size = reader.size(); qint64(size.width()) * size.height() > mostPixels)
        throw RuntimeError(invalidPicture, u"The picture [%1] is too large to be shown: it has %2 x %3 pixels."_s.arg(
                                               file, QString::number(size.width()), QString::number(size.height())));
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

QJsonObject versionJson(const FileVersion& version)
{
    // Numbers of JSON would lose the last digits.
    return {{u"path"_s, version.path},
            {u"size"_s, QString::number(version.size)},
            {u"modified"_s, QString::number(version.modified)}};
}

FileVersion versionFrom(const QJsonValue& value)
{
    return {value[u"path"].toString(), value[u"size"].toString().toLongLong(),
            value[u"modified"].toString().toLongLong()};
}

QByteArray detailsOf(const PanelPicture& picture)
{
    const PictureIdentity& identity = picture.identity;
    const QJsonObject details{{u"notice"_s, picture.notice.left(longestNotice)},
                              {u"project"_s, identity.project},
                              {u"definitions"_s, QJsonArray::fromStringList(identity.definitions)},
                              {u"version"_s, versionJson(identity.version)},
                              {u"copy"_s, versionJson(identity.copy)},
                              {u"range"_s, identity.range}};
    return detailsMark + QJsonDocument(details).toJson(QJsonDocument::Compact);
}

/// What stands behind the bitmap, whose own header says where it ends.
std::optional<QJsonObject> detailsBehind(QFile& device)
{
    const QByteArray header = device.read(6);
    if (header.size() < 6 || !header.startsWith("BM") ||
        !device.seek(qFromLittleEndian<quint32>(header.constData() + 2)))
        return std::nullopt;
    const QByteArray bytes = device.read(mostDetails);
    const QJsonDocument details =
        bytes.startsWith(detailsMark) ? QJsonDocument::fromJson(bytes.mid(detailsMark.size())) : QJsonDocument();
    return details.isObject() ? std::optional(details.object()) : std::nullopt;
}

PictureIdentity identityFrom(const QJsonObject& details)
{
    PictureIdentity identity;
    identity.project = details[u"project"].toString();
    for (const QJsonValue& definition : details[u"definitions"].toArray())
        identity.definitions.append(definition.toString());
    identity.version = versionFrom(details[u"version"]);
    identity.copy = versionFrom(details[u"copy"]);
    identity.range = details[u"range"].toString();
    return identity;
}

} // namespace

TwipsSize sizeInTwips(const QImage& image)
{
    const QSizeF pixels = image.deviceIndependentSize();
    return {toTwips(pixels.width()), toTwips(pixels.height())};
}

PanelPicture loadPictureFile(const QString& file)
{
    QFile device(file);
    openForReading(device);
    const FileVersion version = FileVersion::of(file);
    PanelPicture picture{readPicture(device, file), QString(), {}};
    picture.identity.version = version;
    return picture;
}

QString pictureFileFilter()
{
    struct
    {
        QString name;
        QStringList suffixes;
    } const kinds[] = {{u"Bitmaps"_s, {u"bmp"_s, u"dib"_s}},
                       {u"GIF images"_s, {u"gif"_s}},
                       {u"JPEG images"_s, {u"jpg"_s, u"jpeg"_s}},
                       {u"PNG images"_s, {u"png"_s}},
                       {u"SVG drawings"_s, {u"svg"_s, u"svgz"_s}},
                       {u"TIFF images"_s, {u"tif"_s, u"tiff"_s}},
                       {u"WebP images"_s, {u"webp"_s}},
                       {u"Metafiles"_s, {u"wmf"_s, u"emf"_s}},
                       {u"Icons"_s, {u"ico"_s, u"cur"_s}}};
    const QList<QByteArray> readable = QImageReader::supportedImageFormats();
    QStringList all, filters;
    for (const auto& kind : kinds) {
        // The first suffix is the format's own name.
        if (!readable.contains(kind.suffixes.first().toLatin1()))
            continue;
        QStringList masks;
        for (const QString& suffix : kind.suffixes)
            masks.append(u"*."_s + suffix);
        all += masks;
        filters.append(u"%1 (%2)"_s.arg(kind.name, masks.join(u' ')));
    }
    filters.prepend(u"All Picture Files (%1)"_s.arg(all.join(u' ')));
    filters.append(u"All files (*)"_s);
    return filters.join(u";;"_s);
}

std::optional<PanelPicture> loadCachedPicture(const QString& file)
{
    QFile device(file);
    if (file.isEmpty() || !device.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto details = detailsBehind(device);
    if (!details || !device.seek(0))
        return std::nullopt;
    try {
        PanelPicture picture{readPicture(device, file), (*details)[u"notice"].toString(), identityFrom(*details)};
        picture.image.setDevicePixelRatio(scaleOfResolution(picture.image.dotsPerMeterX()));
        return picture;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::optional<PictureIdentity> cachedIdentity(const QString& file)
{
    QFile device(file);
    if (file.isEmpty() || !device.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto details = detailsBehind(device);
    return details ? std::optional(identityFrom(*details)) : std::nullopt;
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
    if (written) {
        const QByteArray details = detailsOf(picture);
        written = device.write(details) == details.size();
    }
    if (!written || !device.commit())
        throw RuntimeError(pathFileAccessError,
                           u"The picture of the panel cannot be kept in [%1]: %2"_s.arg(file, device.errorString()));
}

} // namespace lumivane
