#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/Dialect.h"

#include <QTemporaryDir>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<Database> openProject()
{
    static QTemporaryDir folder;
    const QString file = folder.filePath(u"fuzz.lvdu"_s);
    Database::create(file);
    const auto project = Database::open(file, databaseConnect());
    project->Execute(u"INSERT INTO LvnSavedPanel (ID, WorkspaceID, Caption) VALUES (1, 1, 'x')"_s);
    return project;
}

} // namespace

/// Any text is a statement that runs or is refused; queries only, so that no run depends on the ones before.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    static const std::shared_ptr<Database> project = openProject();
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    try {
        project->OpenRecordset(text);
    } catch (const RuntimeError&) {
    }
    try {
        matchesLikePattern(text.first(text.size() / 2), text.sliced(text.size() / 2));
    } catch (const RuntimeError&) {
    }
    return 0;
}
