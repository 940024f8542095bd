#pragma once

#include "platform/FileStamp.h"

#include <QStringList>
#include <functional>

namespace lumivane {

// When a file counts as written to its end. Whoever writes one shows it neither by a name nor by a lock, so it is
// looked at twice, and one that has just been written is left alone for a while.

/// How long its writer may pause, in milliseconds. More than a second, so that no later version has the same stored
/// time.
inline constexpr int youth = 2000;

/// Milliseconds until a file of this time is no longer young; 0 for one that is not, or whose time lies ahead.
int untilGrown(const FileStamp& stamp);
/// Takes the first look at files that will be judged soon, so that one pause serves them all. Forgets earlier looks.
void lookAt(const QStringList& paths);
/// Whether the file looked like this then.
bool isLookedAt(const QString& path, const FileStamp& stamp);
/// Whether the file is still as it was at this first look. Lets pass what is missing of the time between two looks.
bool staysAsItWas(const QString& path, const FileStamp& firstLook);

/// How time is let pass: the thread sleeps, if not set otherwise. Tests do without, or let a file change meanwhile.
void setPause(std::function<void(int milliseconds)> pause);
void pauseFor(int milliseconds);

} // namespace lumivane
