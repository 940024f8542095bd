#include "engine/read/FileKind.h"

#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"

#include <QFile>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

bool findEncryptedPackage(QFile& file, qint64 from, qint64 end)
{
    const QStringView name = u"EncryptedPackage";
    const QByteArray wanted(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
    constexpr qint64 blockSize = 64 << 10;
    QByteArray block;
    file.seek(from);
    while (file.pos() < end) {
        const QByteArray next = file.read(blockSize);
        if (next.isEmpty())
            return false;
        block = block.right(wanted.size()) + next;
        if (block.contains(wanted))
            return true;
    }
    return false;
}

/// Compound files hold streams like a small file system; an encrypted workbook is one with a stream of this name.
/// Looking for the name needs no trust in the file's tables. Programs write the directory near one end of the file.
bool hasEncryptedPackage(QFile& file)
{
    constexpr qint64 searched = 16 << 20; // at either end
    const auto found = [&file](qint64 from) { return findEncryptedPackage(file, from, from + searched); };
    return found(0) || (file.size() > searched && found(std::max(searched, file.size() - searched)));
}

/// What other kinds of file begin with, in small letters, and how they are called.
constexpr std::pair<QByteArrayView, QLatin1StringView> otherKinds[] = {
    {"%pdf", "a PDF document"_L1},
    {"\x89png", "a picture"_L1},
    {"\xff\xd8\xff", "a picture"_L1},
    {"gif8", "a picture"_L1},
    {"{\\rtf", "a text document"_L1},
    {"<!doctype html", "a web page"_L1},
    {"<html", "a web page"_L1},
    {"<head", "a web page"_L1},
    {"<table", "a web page"_L1},
    {"<meta", "a web page"_L1},
    {"<?xml", "an XML document"_L1},
    {"<svg", "a picture"_L1},
    {"mime-version:", "a web page"_L1},
    {"\x1f\x8b", "a packed file"_L1},
    {"7z\xbc\xaf", "a packed file"_L1},
    {"rar!", "a packed file"_L1},
    {"\x7f"
     "elf",
     "a program"_L1},
};

QByteArray beginning(const QByteArray& bytes)
{
    QByteArray start = bytes.startsWith("\xef\xbb\xbf") ? bytes.mid(3) : bytes;
    while (!start.isEmpty() && QByteArrayView(" \t\r\n").contains(start.front()))
        start.remove(0, 1);
    // Only the letters of ASCII have a small form here.
    return start.first(std::min<qsizetype>(start.size(), 20)).toLower();
}

/// The oldest workbooks are one bare stream; its first record says which version it is.
bool beginsOldStream(const QByteArray& bytes)
{
    return bytes.size() > 8 && bytes[0] == '\x09' && QByteArrayView("\0\2\4\x08", 4).contains(bytes[1]) &&
           bytes[3] == '\0';
}

/// Packages go by the type of their root part, which for binary workbooks is the only sure sign.
bool isBinaryPart(const Package& package, const std::string& part)
{
    if (part.ends_with(".bin"))
        return true;
    const Package::Entry* types = package.find("[Content_Types].xml");
    if (!types)
        return false;
    pugi::xml_document document;
    readSmallPart(package, *types, document);
    for (const pugi::xml_node node : childrenNamed(document.document_element(), "Override")) {
        std::string_view name = attributeOf(node, "PartName");
        if (name.starts_with('/'))
            name.remove_prefix(1);
        if (name == part)
            return attributeOf(node, "ContentType").find("sheet.binary") != std::string_view::npos;
    }
    return false;
}

FileKind packageKind(const Package& package)
{
    if (const std::string part = rootPart(package); !part.empty())
        return isBinaryPart(package, part) ? FileKind::Xlsb : FileKind::Xlsx;
    if (const Package::Entry* mime = package.find("mimetype"); mime && mime->size < 200) {
        if (package.read(*mime).starts_with("application/vnd.oasis.opendocument"))
            return FileKind::OpenDocument;
    }
    throw Fault{u"there is no workbook in it"_s, ReadCause::NotAWorkbook};
}

} // namespace

FileKind fileKind(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Fault{u"it cannot be opened (%1)"_s.arg(file.errorString()), ReadCause::NotOpened};
    const QByteArray bytes = file.read(512);
    if (bytes.isEmpty())
        throw Fault{u"the file is empty"_s, ReadCause::NotAWorkbook};
    if (bytes.startsWith("PK\3\4") || bytes.startsWith("PK\5\6"))
        return packageKind(Package(path));
    if (bytes.startsWith("\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1")) {
        if (hasEncryptedPackage(file))
            throw Fault{u"it is protected by a password; save it without one"_s, ReadCause::Protected};
        return FileKind::OldBinary;
    }
    if (beginsOldStream(bytes))
        return FileKind::OldBinary;
    const QByteArray start = beginning(bytes);
    for (const auto& [begin, name] : otherKinds) {
        if (start.startsWith(begin))
            throw Fault{u"it is %1, not a workbook"_s.arg(name), ReadCause::NotAWorkbook};
    }
    return FileKind::Text;
}

} // namespace lumivane::engine
