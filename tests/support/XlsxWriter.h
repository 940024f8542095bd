#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace lumivane::test {

/// One entry of a package, with what a test may want to get wrong.
struct PackageEntry
{
    std::string name;
    std::string bytes;
    int flags = 0;         ///< of the ZIP header; 1 is "encrypted"
    long long offset = -1; ///< to claim instead of the true one
    long long size = -1;   ///< unpacked, to claim instead of the true one
    long long packedSize = -1;
    long long crc = -1;
    int method = 0;         ///< 0 stored; 8 deflate, with `bytes` already packed
    std::string extra = {}; ///< field of the directory
};

/// The checksum of a ZIP entry.
uint32_t checksum(const std::string& bytes);

/// A ZIP archive of stored entries, in the order given.
QByteArray makePackage(const std::vector<PackageEntry>& entries);

/// One sheet of a workbook to be made: what stands inside <worksheet>, from <sheetData> alone to all of it.
struct SheetXml
{
    std::string name;
    std::string xml;
    std::string state; ///< "hidden" or "veryHidden"
};

/// The parts of a workbook with these sheets; any of them may be changed or others added before makePackage.
struct WorkbookParts
{
    explicit WorkbookParts(const std::vector<SheetXml>& sheets);

    /// Replaces a part or adds one at the end.
    WorkbookParts& set(const std::string& name, const std::string& bytes);
    WorkbookParts& remove(const std::string& name);
    /// Texts of the shared table, as plain XML inside <si><t>.
    WorkbookParts& sharedTexts(const std::vector<std::string>& texts);
    /// What stands inside <styleSheet>.
    WorkbookParts& styles(const std::string& xml);
    /// What stands inside <xdr:wsDr> of the first sheet's drawings, to which its <drawing r:id='d'/> leads. Charts have
    /// the id "c", pictures "p".
    WorkbookParts& drawings(const std::string& anchors);
    /// What stands inside <workbook> beside the sheets.
    WorkbookParts& inWorkbook(const std::string& beforeSheets, const std::string& behindSheets);

    QByteArray package() const;

    std::vector<PackageEntry> entries;

private:
    void writeWorkbook();

    std::vector<SheetXml> m_sheets;
    std::string m_beforeSheets, m_behindSheets;
};

/// A drawing between the corners of two cells, counted from 0.
std::string drawingAnchor(int column, int row, int endColumn, int endRow, const std::string& object);
/// A drawing of a size in pixels that begins at the corner of a cell.
std::string sizedAnchor(int column, int row, int width, int height, const std::string& object);
std::string chartObject(const std::string& name, const std::string& attributes = "");

/// The path of a new file with these bytes, in a folder that is removed when the program ends.
QString writeTemporary(const QString& fileName, const QByteArray& bytes);

} // namespace lumivane::test
