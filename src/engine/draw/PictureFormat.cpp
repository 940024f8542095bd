#include "engine/draw/PictureFormat.h"

#include <QXmlStreamReader>
#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// As each may repeat others that repeat, their number counts by its power.
constexpr int maxRepeats = 8;

/// An element of the picture, or a picture in it that is made of pixels: another SVG would not be looked into.
bool isOwn(QStringView reference)
{
    const QStringView trimmed = reference.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u'#'))
        return true;
    const QString marker = u";base64,"_s;
    const qsizetype data = trimmed.left(100).indexOf(marker);
    if (!trimmed.startsWith(u"data:image/"_s) || data < 0)
        return false;
    const QStringView bytes = trimmed.mid(data + marker.size());
    // The first bytes of PNG, JPEG, GIF and BMP.
    return bytes.startsWith(u"iVBOR"_s) || bytes.startsWith(u"/9j/"_s) || bytes.startsWith(u"R0lG"_s) ||
           bytes.startsWith(u"Qk"_s);
}

/// Every "url(...)" in a style or a property leads to an element of the picture itself.
bool hasOwnUrls(QStringView value)
{
    for (qsizetype at = 0; (at = value.indexOf(u"url("_s, at, Qt::CaseInsensitive)) >= 0;) {
        at += 4;
        while (at < value.size() && (value[at].isSpace() || value[at] == u'\'' || value[at] == u'"'))
            ++at;
        if (at >= value.size() || value[at] != u'#')
            return false;
    }
    return !value.contains(u"@import"_s, Qt::CaseInsensitive);
}

bool hasOwnAttributes(const QXmlStreamAttributes& attributes)
{
    return std::all_of(attributes.begin(), attributes.end(), [](const QXmlStreamAttribute& attribute) {
        const bool isReference = attribute.name() == u"href" || attribute.name() == u"src";
        return isReference ? isOwn(attribute.value()) : hasOwnUrls(attribute.value());
    });
}

} // namespace

PictureFormat pictureFormat(const QByteArray& bytes)
{
    using enum PictureFormat;
    static const std::pair<QByteArray, PictureFormat> beginnings[] = {
        {"\x89PNG\r\n\x1a\n", Png},
        {"\xff\xd8\xff", Jpeg},
        {"GIF8", Gif},
        {"BM", Bmp},
        {QByteArray("II*\0", 4), Tiff},
        {QByteArray("MM\0*", 4), Tiff},
        {"\xd7\xcd\xc6\x9a", Wmf},
        {QByteArray("\1\0\x09\0", 4), Wmf},
        {QByteArray("\2\0\x09\0", 4), Wmf},
    };
    if (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP")
        return WebP;
    if (bytes.startsWith(QByteArray("\1\0\0\0", 4)) && bytes.mid(40, 4) == " EMF")
        return Emf;
    for (const auto& [beginning, format] : beginnings) {
        if (bytes.startsWith(beginning))
            return format;
    }
    const QByteArray start = bytes.left(1024).trimmed();
    const bool isXml = start.startsWith('<') || start.startsWith("\xef\xbb\xbf<");
    return isXml && bytes.left(65536).contains("<svg") ? Svg : Unknown;
}

const char* formatName(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png:
        return "png";
    case PictureFormat::Jpeg:
        return "jpeg";
    case PictureFormat::Gif:
        return "gif";
    case PictureFormat::Bmp:
        return "bmp";
    case PictureFormat::Tiff:
        return "tiff";
    case PictureFormat::WebP:
        return "webp";
    case PictureFormat::Svg:
        return "svg";
    default:
        return nullptr;
    }
}

bool isSelfContained(const QByteArray& svg)
{
    constexpr int maxElements = 200000, maxDepth = 200;
    QXmlStreamReader xml(svg);
    int elements = 0, repeats = 0, depth = 0;
    bool inStyle = false;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::ProcessingInstruction:
            return false;
        case QXmlStreamReader::DTD:
            if (!xml.entityDeclarations().isEmpty())
                return false;
            break;
        case QXmlStreamReader::StartElement:
            repeats += xml.name() == u"use" ? 1 : 0;
            inStyle = xml.name() == u"style";
            if (++elements > maxElements || ++depth > maxDepth || repeats > maxRepeats ||
                !hasOwnAttributes(xml.attributes()))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            inStyle = false;
            --depth;
            break;
        case QXmlStreamReader::Characters:
            if (inStyle && !hasOwnUrls(xml.text()))
                return false;
            break;
        default:
            break;
        }
    }
    return !xml.hasError();
}

} // namespace lumivane::engine
