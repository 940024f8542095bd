#pragma once

#include <QByteArray>
#include <QList>
#include <utility>

namespace lumivane::demo {

/// The bytes of a ZIP archive with these entries, each deflated. Time stamps are fixed, so that equal contents give
/// equal archives.
QByteArray zipArchive(const QList<std::pair<QByteArray, QByteArray>>& entries);

} // namespace lumivane::demo
