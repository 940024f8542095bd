#pragma once

#include "engine/draw/SheetPainter.h"
#include "engine/read/WorkbookFile.h"
#include "host/Host.h"

#include <functional>
#include <map>
#include <optional>

namespace lumivane {

/// A worksheet of one opening of a workbook: shared content with what this opening has changed laid over it. The sheet
/// is read from the file when its cells are first needed, so that asking for its name costs nothing; a damaged sheet
/// fails there and then.
class EmbeddedSheet : public Worksheet
{
public:
    EmbeddedSheet(std::shared_ptr<engine::WorkbookFile> file, int index, const QString& workbookName,
                  engine::Metrics metrics, std::function<void()> onActivate);

    QString Name() const override;
    QString WorkbookName() const override { return m_workbookName; }
    bool Visible() const override;
    CellArea usedArea() override;
    std::optional<CellArea> contentArea(Uncomputed formulas = Uncomputed::Count) override;
    qint64 uncomputedFormulas(const CellArea& area) override;
    QStringList shownTexts(const CellArea& area) override;
    QStringList valueTexts(const CellArea& area) override;
    std::vector<double> rowHeights(int first, int last) override;
    void setRowHeight(int firstRow, int lastRow, double points) override;
    std::vector<double> columnWidths(int first, int last) override;
    void setColumnWidth(int firstColumn, int lastColumn, double characters) override;
    void setInteriorColor(int row, int column, QRgb color) override;
    std::optional<CellArea> Find(const CellArea& area, const FindQuestion& question) override;
    QStringList ShapeNames() override;
    std::vector<Undrawn> undrawn(const CellArea& area) override;
    std::vector<Undrawn> undrawnOfShape(const QString& name) override;
    void Activate() override { m_onActivate(); }
    QImage CopyPicture(const CellArea& area, double scale = 1) override;
    QImage CopyShapePicture(const QString& name, double scale = 1) override;

    const engine::SheetContent& content();
    /// Drawing and sizes with the changes laid over. Valid until the next change.
    const engine::SheetPainter& painter();

private:
    template <class TextOf>
    QStringList textsOf(const CellArea& area, TextOf textOf);
    const engine::ShownSheet& shown();
    QString place() const;
    /// The first of that name, without regard to case; null if there is none.
    const engine::DrawingContent* drawingNamed(const QString& name);
    void addUndrawn(const CellArea& area, std::vector<Undrawn>& missing);

    std::shared_ptr<engine::WorkbookFile> m_file;
    std::shared_ptr<const engine::WorkbookContent> m_workbook;
    const int m_index;
    const QString m_workbookName;
    const engine::Metrics m_metrics;
    const std::function<void()> m_onActivate;
    engine::SheetOverlay m_overlay;
    std::shared_ptr<const engine::SheetContent> m_content;
    std::shared_ptr<engine::ShownSheet> m_shown;
    std::map<Uncomputed, std::optional<std::optional<CellArea>>> m_contentAreas; ///< those asked for: a job asks often
    std::unique_ptr<engine::SheetPainter> m_painter;
};

} // namespace lumivane
