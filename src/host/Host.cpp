#include "host/Host.h"

#include "platform/RuntimeError.h"
#include "services/modUtilsFile.h"

#include <QFileInfo>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double maxRowHeightPoints = 409.5;
constexpr double maxColumnWidthCharacters = 255;

QString sheetPlace(const Worksheet& sheet)
{
    return u"sheet \"%1\" of workbook \"%2\""_s.arg(sheet.Name(), sheet.WorkbookName());
}

[[noreturn]] void refuseAddress(const Worksheet& sheet, const QString& address)
{
    throw RuntimeError(RuntimeError::ApplicationDefined,
                       u"\"%1\" is not an address of cells on %2."_s.arg(address, sheetPlace(sheet)));
}

/// Also refuses what is no number at all.
void checkSize(const SheetRange& range, double size, double most, const QString& what)
{
    if (size >= 0 && size <= most)
        return;
    throw RuntimeError(
        RuntimeError::ApplicationDefined,
        u"A %1 of %2 cannot be set for %3 on %4: it has to lie between 0 and %5."_s.arg(
            what, QString::number(size), range.Address(), sheetPlace(range.sheet()), QString::number(most)));
}

/// The key alone ("5") means the same as the key twice ("5:5").
std::optional<CellArea> parseLine(const QString& key)
{
    return CellArea::parse(key.contains(u':') ? key : QString(key % u':' % key));
}

HostFactory& theHostFactory()
{
    static HostFactory factory;
    return factory;
}

QString undrawnPhrase(const Undrawn& entry)
{
    if (entry.kind == Undrawn::Kind::Drawing)
        return u"the %1 \"%2\""_s.arg(entry.what, entry.name);
    if (entry.kind == Undrawn::Kind::Formulas)
        return entry.count == 1 ? u"the result of a formula, which the file does not store"_s
                                : u"the results of %1 formulas, which the file does not store"_s.arg(entry.count);
    return entry.what;
}

} // namespace

QString undrawnSentence(const std::vector<Undrawn>& undrawn)
{
    QStringList phrases;
    for (const Undrawn& entry : undrawn)
        phrases.append(undrawnPhrase(entry));
    return phrases.isEmpty() ? QString() : u"Not shown here: %1."_s.arg(phrases.join(u", "_s));
}

QStringList undrawnSentences(const std::vector<Undrawn>& undrawn)
{
    using enum Undrawn::Kind;
    constexpr std::pair<Undrawn::Kind, QStringView> sentences[] = {{Drawing, u"Not drawn: %1."},
                                                                   {Look, u"Not drawn as in the file: %1."},
                                                                   {Formulas, u"Left blank: %1."},
                                                                   {Part, u"%1"}};
    QStringList result;
    for (const auto& [kind, sentence] : sentences) {
        QStringList phrases;
        for (const Undrawn& entry : undrawn) {
            if (entry.kind == kind)
                phrases.append(undrawnPhrase(entry));
        }
        if (!phrases.isEmpty())
            result.append(sentence.toString().arg(phrases.join(kind == Part ? u" "_s : u", "_s)));
    }
    return result;
}

SheetRange SheetRange::Cells(int i, int j) const
{
    return m_sheet->Cells(m_area.firstRow + i - 1, m_area.firstColumn + j - 1);
}

QString SheetRange::ValueText() const
{
    return m_sheet->valueText(m_area.firstRow, m_area.firstColumn);
}

double SheetRange::RowHeight() const
{
    return m_sheet->rowHeight(m_area.firstRow);
}

void SheetRange::setRowHeight(double points) const
{
    checkSize(*this, points, maxRowHeightPoints, u"row height"_s);
    m_sheet->setRowHeight(m_area.firstRow, m_area.lastRow, points);
}

double SheetRange::ColumnWidth() const
{
    return m_sheet->columnWidth(m_area.firstColumn);
}

void SheetRange::setColumnWidth(double characters) const
{
    checkSize(*this, characters, maxColumnWidthCharacters, u"column width"_s);
    m_sheet->setColumnWidth(m_area.firstColumn, m_area.lastColumn, characters);
}

SheetRange Worksheet::Range(const QString& address)
{
    const auto area = CellArea::parse(address);
    if (!area)
        refuseAddress(*this, address);
    return {*this, *area};
}

SheetRange Worksheet::Range(const SheetRange& cell1, const SheetRange& cell2)
{
    const CellArea& a = cell1.area();
    const CellArea& b = cell2.area();
    return {*this, CellArea{std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
                            std::max(a.lastRow, b.lastRow), std::max(a.lastColumn, b.lastColumn)}};
}

SheetRange Worksheet::Cells(int row, int column)
{
    if (!CellArea::wholeSheet().contains(row, column))
        refuseAddress(*this, u"row %1, column %2"_s.arg(row).arg(column));
    return {*this, CellArea::cell(row, column)};
}

SheetRange Worksheet::Cells()
{
    return {*this, CellArea::wholeSheet()};
}

SheetRange Worksheet::Rows(const QString& key)
{
    const auto area = parseLine(key);
    if (!area || area->columns() != maxColumn)
        refuseAddress(*this, key);
    return {*this, *area};
}

SheetRange Worksheet::Columns(const QString& letters)
{
    const auto area = parseLine(letters);
    if (!area || area->rows() != maxRow)
        refuseAddress(*this, letters);
    return {*this, *area};
}

SheetRange Worksheet::UsedRange()
{
    return {*this, usedArea()};
}

void Workbook::SaveCopyAs(const QString& path)
{
    const QString file = FullName();
    const auto refuse = [&](const QString& reason) {
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The workbook \"%1\" cannot be copied to [%2]: %3"_s.arg(Name(), path, reason));
    };
    if (!Saved())
        refuse(u"it has changes that are not saved. Save it and try again."_s);
    if (QFileInfo(file) == QFileInfo(path))
        refuse(u"that is the workbook itself."_s);
    if (!File_Copy(file, path))
        refuse(u"[%1] cannot be read, or the copy cannot be written."_s.arg(file));
}

void setHostFactory(HostFactory factory)
{
    theHostFactory() = std::move(factory);
}

const HostFactory& hostFactory()
{
    return theHostFactory();
}

} // namespace lumivane
