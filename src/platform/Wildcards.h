#pragma once

#include <QStringView>

namespace lumivane {

/// Whether a whole text fits a pattern in which `*` stands for any characters. `fitsOne(pattern, at, character)` tells
/// whether the element of the pattern at a place fits one character, and moves the place behind the element. Only the
/// last `*` is taken back, so that a hostile pattern costs no more than pattern times text.
template <class FitsOne>
bool fitsPattern(QStringView text, QStringView pattern, FitsOne fitsOne)
{
    qsizetype t = 0, p = 0, star = -1, resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = ++p;
            resume = t;
        } else if (p < pattern.size() && fitsOne(pattern, p, text[t])) {
            ++t;
        } else if (star >= 0) {
            p = star;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

} // namespace lumivane
