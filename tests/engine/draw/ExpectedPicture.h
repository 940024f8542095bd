#pragma once

#include <QImage>

namespace lumivane::test {

/// Fails unless the picture is the one stored in the test's data as NAME.png, but for what versions of font libraries
/// make of the rims of letters. Then it writes the one it got, names both, and copying it over the stored one accepts
/// it.
void expectPicture(const QImage& got, const QString& name);

} // namespace lumivane::test
