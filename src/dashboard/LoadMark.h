#pragma once

#include <QString>

namespace lumivane {

/// A note on disk about the panel that is being loaded. It goes with the load, whatever comes of it; one that is found
/// at a later start names the panel that ended the program.
class LoadMark
{
public:
    LoadMark(const QString& project, int panelID);
    ~LoadMark();
    Q_DISABLE_COPY_MOVE(LoadMark)

    /// The panel of this project with which the program ended; -1 where it did not. The note goes.
    static int takeLeftOver(const QString& project);
};

} // namespace lumivane
