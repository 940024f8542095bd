#include "viewer/CellPlace.h"

#include <QStringList>

namespace lumivane {

using namespace Qt::StringLiterals;
using namespace engine;

namespace {

constexpr qsizetype mostAreas = 256;

/// Splits at commas that stand outside of quoted sheet names.
QStringList placeParts(const QString& text)
{
    QStringList parts{QString()};
    bool quoted = false;
    for (const QChar character : text) {
        quoted = quoted != (character == u'\'');
        if (character == u',' && !quoted)
            parts.append(QString());
        else
            parts.last() += character;
    }
    return parts;
}

QString unquotedSheetName(const QString& text)
{
    if (text.size() < 2 || !text.startsWith(u'\'') || !text.endsWith(u'\''))
        return text;
    return text.sliced(1, text.size() - 2).replace(u"''"_s, u"'"_s);
}

/// Cells with or without a sheet in front. None when the text is no address; `unknownSheet` tells when the sheet is the
/// reason.
std::optional<CellPlace> readAddress(const QString& text, const WorkbookContent& workbook, int currentSheet,
                                     QString* unknownSheet = nullptr)
{
    CellPlace place;
    place.sheet = -1;
    const QStringList parts = placeParts(text);
    if (parts.size() > mostAreas)
        return std::nullopt;
    for (const QString& part : parts) {
        const qsizetype mark = part.lastIndexOf(u'!');
        const auto area = CellArea::parse(QStringView(part).sliced(mark + 1).trimmed());
        if (!area)
            return std::nullopt;
        int sheet = currentSheet;
        if (mark >= 0) {
            const QString name = unquotedSheetName(part.first(mark).trimmed());
            sheet = workbook.sheetNamed(name);
            if (sheet < 0 && unknownSheet)
                *unknownSheet = name;
        }
        if (sheet < 0 || (place.sheet >= 0 && place.sheet != sheet))
            return std::nullopt;
        place.sheet = sheet;
        place.areas.push_back(*area);
    }
    return place;
}

std::optional<CellPlace> placeOfName(const DefinedName& name, const WorkbookContent& workbook)
{
    QString formula = name.formula.trimmed();
    if (formula.startsWith(u'='))
        formula.remove(0, 1);
    return readAddress(formula, workbook, name.sheet);
}

const DefinedName* definedName(const WorkbookContent& workbook, const QString& text, int currentSheet)
{
    const DefinedName* found = nullptr;
    for (const DefinedName& name : workbook.definedNames) {
        if (name.name.compare(text, Qt::CaseInsensitive) != 0)
            continue;
        if (name.sheet == currentSheet)
            return &name;
        if (name.sheet < 0)
            found = &name;
    }
    return found;
}

bool canBeShown(const CellPlace& place, const WorkbookContent& workbook)
{
    const auto index = static_cast<size_t>(place.sheet);
    return index < workbook.sheets.size() && workbook.sheets[index].visible && !workbook.sheets[index].isChartSheet;
}

} // namespace

Result<CellPlace> readCellPlace(const QString& text, const WorkbookContent& workbook, int currentSheet)
{
    const QString wanted = text.trimmed();
    QString unknownSheet;
    std::optional<CellPlace> place = readAddress(wanted, workbook, currentSheet, &unknownSheet);
    if (!place && !unknownSheet.isEmpty())
        return Failure{u"There is no sheet \"%1\" in this workbook."_s.arg(unknownSheet)};
    if (!place) {
        const DefinedName* name = definedName(workbook, wanted, currentSheet);
        if (!name)
            return Failure{
                u"\"%1\" is neither an address nor a name of this workbook. Type an address such as B3:D8."_s.arg(
                    wanted)};
        place = placeOfName(*name, workbook);
        if (!place)
            return Failure{u"The name \"%1\" does not stand for cells that can be selected: it is defined as %2."_s.arg(
                name->name, name->formula)};
    }
    if (!canBeShown(*place, workbook))
        return Failure{u"The sheet \"%1\" is hidden, so that its cells cannot be selected."_s.arg(
            workbook.sheets[static_cast<size_t>(place->sheet)].name)};
    return *place;
}

QStringList reachableNames(const WorkbookContent& workbook, int currentSheet)
{
    QStringList names;
    for (const DefinedName& name : workbook.definedNames) {
        // Names beginning with an underscore are those that programs keep for themselves.
        if (name.name.startsWith(u'_') || (name.sheet >= 0 && name.sheet != currentSheet))
            continue;
        const auto place = placeOfName(name, workbook);
        if (place && canBeShown(*place, workbook))
            names.append(name.name);
    }
    names.sort(Qt::CaseInsensitive);
    names.removeDuplicates();
    return names;
}

QString nameOf(const CellPlace& place, const WorkbookContent& workbook)
{
    for (const DefinedName& name : workbook.definedNames) {
        if (!name.name.startsWith(u'_') && placeOfName(name, workbook) == place)
            return name.name;
    }
    return {};
}

} // namespace lumivane
