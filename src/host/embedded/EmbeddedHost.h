#pragma once

#include "engine/draw/SheetGeometry.h"
#include "engine/read/ContentCache.h"
#include "host/Host.h"

namespace lumivane {

class EmbeddedSheet;
class EmbeddedWorkbook;

/// The engine in the place of a spreadsheet program: it reads workbook files itself and draws them itself. An
/// application costs nothing; what was read is kept in the cache and shared between applications.
class EmbeddedApplication : public Application
{
public:
    /// The cache must outlive the application.
    explicit EmbeddedApplication(engine::ContentCache& cache, engine::Metrics metrics = engine::Metrics::File);
    ~EmbeddedApplication() override;

    /// Never asks anybody anything and never follows links, whatever `updateLinks` says.
    std::shared_ptr<Workbook> Open(const QString& path, bool updateLinks = false) override;
    int WorkbooksCount() const override;
    std::shared_ptr<Workbook> WorkbookItem(int index) override;
    std::shared_ptr<Workbook> ActiveWorkbook() override;
    std::shared_ptr<Worksheet> ActiveSheet() override;
    void Quit() override;

private:
    friend class EmbeddedWorkbook;
    engine::ContentCache& m_cache;
    const engine::Metrics m_metrics;
    std::vector<std::shared_ptr<EmbeddedWorkbook>> m_workbooks; ///< in the order of opening
    std::shared_ptr<EmbeddedWorkbook> m_active;
};

/// One opening of a workbook. It stays usable after Close for whoever still holds it.
class EmbeddedWorkbook : public Workbook
{
public:
    EmbeddedWorkbook(EmbeddedApplication& application, const QString& path);

    QString FullName() const override { return m_path; }
    QString Name() const override;
    QStringList WorksheetNames() const override; ///< chart sheets left out
    std::shared_ptr<Worksheet> WorksheetByName(const QString& name) override;
    /// The first visible worksheet where a chart sheet was active; null without any worksheet.
    std::shared_ptr<Worksheet> ActiveSheet() override;
    void Activate() override;
    /// Reads the file as it is now. Worksheets handed out before keep what they had.
    void RefreshAll() override;
    /// Leaves the file alone: nothing that an opening changes belongs into it.
    void Save() override {}
    void Close() override;

    const engine::WorkbookContent& content() const { return *m_file->content(); }

private:
    friend class EmbeddedApplication;
    void read();
    std::shared_ptr<EmbeddedSheet> worksheet(int index);

    EmbeddedApplication* m_application; ///< null once closed
    engine::ContentCache& m_cache;
    const engine::Metrics m_metrics;
    const QString m_path;
    std::shared_ptr<engine::WorkbookFile> m_file;
    std::vector<std::shared_ptr<EmbeddedSheet>> m_sheets; ///< by index, null until asked for
    std::shared_ptr<int> m_activeSheet;                   ///< shared with the sheets, which set it
};

/// The one cache of the process, so that whoever shows a workbook and whoever captures from it read it once.
engine::ContentCache& processContentCache();
/// A worker on the cache of the process.
std::unique_ptr<Application> makeEmbeddedWorker();

} // namespace lumivane
