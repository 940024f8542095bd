#include "host/embedded/EmbeddedSheet.h"

#include "engine/draw/DrawingLayer.h"
#include "engine/draw/DrawingPlace.h"
#include "engine/show/CellSearch.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace lumivane {

using namespace engine;

using namespace Qt::StringLiterals;

namespace {

/// Larger pictures are refused: 256 MB of memory for one picture serve nobody.
constexpr qint64 maxPicturePixels = 64ll << 20;
constexpr double maxPictureScale = 8;

/// What a picture of a drawing lacks.
std::optional<Undrawn> undrawnOf(const DrawingContent& drawing)
{
    const QString kind = kindWord(drawing.kind);
    if (isUndrawn(drawing))
        return Undrawn{Undrawn::Kind::Drawing, kind, drawing.name};
    if (const QString gap = drawingGap(drawing); !gap.isEmpty())
        return Undrawn{Undrawn::Kind::Look, u"the %1 \"%2\" as it should be (%3)"_s.arg(kind, drawing.name, gap)};
    return std::nullopt;
}

} // namespace

EmbeddedSheet::EmbeddedSheet(std::shared_ptr<WorkbookFile> file, int index, const QString& workbookName,
                             Metrics metrics, std::function<void()> onActivate)
    : m_file(std::move(file)), m_workbook(m_file->content()), m_index(index), m_workbookName(workbookName),
      m_metrics(metrics), m_onActivate(std::move(onActivate))
{
}

QString EmbeddedSheet::Name() const
{
    return m_workbook->sheets[static_cast<size_t>(m_index)].name;
}

bool EmbeddedSheet::Visible() const
{
    return m_workbook->sheets[static_cast<size_t>(m_index)].visible;
}

const SheetContent& EmbeddedSheet::content()
{
    if (!m_content)
        m_content = m_file->sheet(m_index);
    return *m_content;
}

const ShownSheet& EmbeddedSheet::shown()
{
    if (!m_shown) {
        content();
        m_shown = std::make_shared<ShownSheet>(m_workbook, m_content, &m_overlay, WorkbookFile::sheetsOf(m_file));
    }
    return *m_shown;
}

const SheetPainter& EmbeddedSheet::painter()
{
    if (!m_painter) {
        shown();
        m_painter = std::make_unique<SheetPainter>(m_shown, m_metrics);
    }
    return *m_painter;
}

QString EmbeddedSheet::place() const
{
    return u"sheet \"%1\" of workbook \"%2\""_s.arg(Name(), m_workbookName);
}

CellArea EmbeddedSheet::usedArea()
{
    return content().used.value_or(CellArea::cell(1, 1));
}

std::optional<CellArea> EmbeddedSheet::contentArea(Uncomputed formulas)
{
    auto& known = m_contentAreas[formulas];
    if (!known)
        known = shown().extent([&](int, const Cell& cell) {
            const bool leftOut = formulas == Uncomputed::LeaveOut && cell.kind == CellKind::Uncomputed;
            return !leftOut && m_shown->hasContents(cell);
        });
    return *known;
}

qint64 EmbeddedSheet::uncomputedFormulas(const CellArea& area)
{
    return shown().uncomputedFormulas(area);
}

template <class TextOf>
QStringList EmbeddedSheet::textsOf(const CellArea& area, TextOf textOf)
{
    QStringList texts(qsizetype(area.rows()) * area.columns());
    const auto [begin, end] = content().rowIndices(area);
    for (size_t i = begin; i < end; ++i) {
        const qsizetype first = qsizetype(m_content->rows[i].row - area.firstRow) * area.columns() - area.firstColumn;
        for (const Cell& cell : m_content->cellsIn(i, area.firstColumn, area.lastColumn))
            texts[first + cell.column] = textOf(m_content->rows[i].row, cell);
    }
    return texts;
}

QStringList EmbeddedSheet::shownTexts(const CellArea& area)
{
    return textsOf(area, [this](int row, const Cell& cell) { return shown().shown(row, cell); });
}

QStringList EmbeddedSheet::valueTexts(const CellArea& area)
{
    return textsOf(area, [this](int, const Cell& cell) { return shown().plain(cell); });
}

std::vector<double> EmbeddedSheet::rowHeights(int first, int last)
{
    std::vector<double> heights;
    for (int row = first; row <= last; ++row)
        heights.push_back(painter().geometry().rowHeightPoints(row));
    return heights;
}

void EmbeddedSheet::setRowHeight(int firstRow, int lastRow, double points)
{
    for (int row = firstRow; row <= lastRow; ++row)
        m_overlay.rowHeights[row] = points;
    m_painter.reset();
}

std::vector<double> EmbeddedSheet::columnWidths(int first, int last)
{
    std::vector<double> widths;
    for (int column = first; column <= last; ++column)
        widths.push_back(painter().geometry().columnWidthCharacters(column));
    return widths;
}

void EmbeddedSheet::setColumnWidth(int firstColumn, int lastColumn, double characters)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        m_overlay.columnWidths[column] = characters;
    m_painter.reset();
}

void EmbeddedSheet::setInteriorColor(int row, int column, QRgb color)
{
    m_overlay.colors[{row, column}] = color;
    m_painter.reset();
}

std::optional<CellArea> EmbeddedSheet::Find(const CellArea& area, const FindQuestion& question)
{
    return findCell(shown(), area, question);
}

QStringList EmbeddedSheet::ShapeNames()
{
    QStringList names;
    for (const DrawingContent& drawing : content().drawings)
        names.append(drawing.name);
    return names;
}

void EmbeddedSheet::addUndrawn(const CellArea& area, std::vector<Undrawn>& missing)
{
    if (content().drawings.empty())
        return;
    const DrawingPlaces places(painter().geometry(), content().drawings);
    const QRectF place = places.rect(area);
    for (const DrawingContent& drawing : content().drawings) {
        if (!places.showsOn(drawing, place))
            continue;
        if (const auto lacking = undrawnOf(drawing))
            missing.push_back(*lacking);
    }
}

std::vector<Undrawn> EmbeddedSheet::undrawnOfShape(const QString& name)
{
    const DrawingContent* drawing = drawingNamed(name);
    const auto lacking = drawing ? undrawnOf(*drawing) : std::nullopt;
    return lacking ? std::vector<Undrawn>{*lacking} : std::vector<Undrawn>();
}

const DrawingContent* EmbeddedSheet::drawingNamed(const QString& name)
{
    const auto& drawings = content().drawings;
    const auto found = std::find_if(drawings.begin(), drawings.end(), [&](const DrawingContent& one) {
        return one.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == drawings.end() ? nullptr : &*found;
}

std::vector<Undrawn> EmbeddedSheet::undrawn(const CellArea& area)
{
    std::vector<Undrawn> missing;
    if (!content().problem.isEmpty())
        missing.push_back({Undrawn::Kind::Part, content().problem});
    addUndrawn(area, missing);
    for (const QString& fault : shown().conditionsLeftOut(area))
        missing.push_back({Undrawn::Kind::Look, u"conditional formats (%1)"_s.arg(fault)});
    if (const qint64 formulas = uncomputedFormulas(area))
        missing.push_back({Undrawn::Kind::Formulas, {}, {}, formulas});
    return missing;
}

QImage EmbeddedSheet::CopyPicture(const CellArea& area, double scale)
{
    if (!(scale > 0 && scale <= maxPictureScale))
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"A picture cannot be taken at a scale of %1."_s.arg(scale));
    const QSize size = painter().size(area, scale);
    if (size.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"Nothing of the range %1 on %2 is visible: all its rows or columns are hidden."_s.arg(
                               area.relative(), place()));
    const bool drawable = qint64(size.width()) * size.height() <= maxPicturePixels &&
                          std::max(size.width(), size.height()) <= SheetPainter::maxSide;
    const QImage picture = drawable ? painter().image(area, scale) : QImage();
    if (picture.isNull())
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The range %1 on %2 is too large for a picture (%3 x %4 pixels). Select a smaller one."_s
                               .arg(area.relative(), place())
                               .arg(size.width())
                               .arg(size.height()));
    return picture;
}

QImage EmbeddedSheet::CopyShapePicture(const QString& name, double scale)
{
    const DrawingContent* drawing = drawingNamed(name);
    const auto failure = [&](const QString& sentence, const QString& kind) {
        return RuntimeError(RuntimeError::ApplicationDefined, sentence.arg(kind, name, place()));
    };
    if (!drawing)
        throw failure(u"There is no %1 \"%2\" on %3."_s, u"chart or shape"_s);
    if (drawing->hidden)
        throw failure(u"The %1 \"%2\" on %3 is hidden."_s, kindWord(drawing->kind));
    if (isUndrawn(*drawing))
        throw failure(u"The %1 \"%2\" on %3 cannot be drawn yet."_s, kindWord(drawing->kind));
    const QImage picture = painter().drawingImage(*drawing, std::clamp(scale, 0.01, maxPictureScale));
    if (picture.isNull())
        throw failure(u"The %1 \"%2\" on %3 has no size or is too large for a picture."_s, kindWord(drawing->kind));
    return picture;
}

} // namespace lumivane
