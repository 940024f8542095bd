#pragma once

#include <QString>

namespace lumivane {

/// Takes the settings of a program folder; empty: of the one that the program has.
void useProgramFolder(const QString& home);

/// A project as the program has it open, for one command: gDB, gSources and gWorkspace are set while this object
/// lives. Throws RuntimeError with a sentence naming the file or the dashboard.
class OpenProject
{
public:
    /// `home` is the program folder, with its picture cache and settings; empty: where the program has it.
    OpenProject(const QString& file, const QString& home);
    ~OpenProject();
    OpenProject(const OpenProject&) = delete;

    /// Makes a dashboard the present one, as opening it in the window does; an empty name means the one used last.
    void loadDashboard(const QString& name);
};

} // namespace lumivane
