#include "host/embedded/EmbeddedHost.h"

#include "host/embedded/EmbeddedSheet.h"
#include "platform/RuntimeError.h"

#include <QFileInfo>
#include <algorithm>

namespace lumivane {

using namespace engine;

EmbeddedApplication::EmbeddedApplication(ContentCache& cache, Metrics metrics) : m_cache(cache), m_metrics(metrics) {}

EmbeddedApplication::~EmbeddedApplication()
{
    EmbeddedApplication::Quit();
}

std::shared_ptr<Workbook> EmbeddedApplication::Open(const QString& path, bool)
{
    m_active = std::make_shared<EmbeddedWorkbook>(*this, path);
    m_workbooks.push_back(m_active);
    return m_active;
}

int EmbeddedApplication::WorkbooksCount() const
{
    return static_cast<int>(m_workbooks.size());
}

std::shared_ptr<Workbook> EmbeddedApplication::WorkbookItem(int index)
{
    if (index < 1 || index > WorkbooksCount())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return m_workbooks[static_cast<size_t>(index - 1)];
}

std::shared_ptr<Workbook> EmbeddedApplication::ActiveWorkbook()
{
    return m_active;
}

std::shared_ptr<Worksheet> EmbeddedApplication::ActiveSheet()
{
    return m_active ? m_active->ActiveSheet() : nullptr;
}

void EmbeddedApplication::Quit()
{
    for (const auto& workbook : m_workbooks)
        workbook->m_application = nullptr;
    m_workbooks.clear();
    m_active = nullptr;
}

EmbeddedWorkbook::EmbeddedWorkbook(EmbeddedApplication& application, const QString& path)
    : m_application(&application), m_cache(application.m_cache), m_metrics(application.m_metrics),
      m_path(QFileInfo(path).absoluteFilePath())
{
    read();
}

void EmbeddedWorkbook::read()
{
    m_file = m_cache.open(m_path);
    m_sheets.assign(content().sheets.size(), nullptr);
    m_activeSheet = std::make_shared<int>(content().activeSheet);
}

QString EmbeddedWorkbook::Name() const
{
    return QFileInfo(m_path).fileName();
}

QStringList EmbeddedWorkbook::WorksheetNames() const
{
    return content().worksheetNames();
}

std::shared_ptr<EmbeddedSheet> EmbeddedWorkbook::worksheet(int index)
{
    auto& sheet = m_sheets[static_cast<size_t>(index)];
    if (!sheet)
        sheet = std::make_shared<EmbeddedSheet>(m_file, index, Name(), m_metrics,
                                                [active = m_activeSheet, index] { *active = index; });
    return sheet;
}

std::shared_ptr<Worksheet> EmbeddedWorkbook::WorksheetByName(const QString& name)
{
    const int index = content().sheetStoredAs(name);
    return index < 0 || content().sheets[static_cast<size_t>(index)].isChartSheet ? nullptr : worksheet(index);
}

std::shared_ptr<Worksheet> EmbeddedWorkbook::ActiveSheet()
{
    const auto& sheets = content().sheets;
    const int active = *m_activeSheet;
    if (active >= 0 && active < static_cast<int>(sheets.size()) && !sheets[static_cast<size_t>(active)].isChartSheet)
        return worksheet(active);
    const auto place = std::find_if(sheets.begin(), sheets.end(),
                                    [](const SheetEntry& entry) { return entry.visible && !entry.isChartSheet; });
    return place == sheets.end() ? nullptr : worksheet(static_cast<int>(place - sheets.begin()));
}

void EmbeddedWorkbook::Activate()
{
    if (!m_application)
        return;
    for (const auto& workbook : m_application->m_workbooks) {
        if (workbook.get() == this)
            m_application->m_active = workbook;
    }
}

void EmbeddedWorkbook::RefreshAll()
{
    read();
}

void EmbeddedWorkbook::Close()
{
    EmbeddedApplication* const application = std::exchange(m_application, nullptr);
    if (!application)
        return;
    auto& open = application->m_workbooks;
    const auto self = std::find_if(open.begin(), open.end(), [this](const auto& w) { return w.get() == this; });
    if (self == open.end())
        return;
    const std::shared_ptr<EmbeddedWorkbook> keepAlive = *self;
    open.erase(self);
    if (application->m_active == keepAlive)
        application->m_active = open.empty() ? nullptr : open.back();
}

ContentCache& processContentCache()
{
    static ContentCache cache;
    return cache;
}

std::unique_ptr<Application> makeEmbeddedWorker()
{
    return std::make_unique<EmbeddedApplication>(processContentCache());
}

} // namespace lumivane
