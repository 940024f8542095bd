#pragma once

#include <QByteArray>
#include <QIODevice>
#include <optional>

namespace lumivane {

/// The longest text of a drawing that is read: Qt takes up to 230 times as much memory for it.
inline constexpr qint64 longestDrawing = 3 << 20;

/// Whether the device begins like a packed drawing (.svgz). Leaves its position.
bool isPackedDrawing(QIODevice& device);
/// Its text, inflated through a buffer of fixed size; none for damaged bytes and for more than `longestDrawing`.
std::optional<QByteArray> unpackDrawing(QIODevice& device);

} // namespace lumivane
