#pragma once

#include <QtGlobal>
#include <algorithm>

namespace lumivane::engine {

/// What the drawings of one sheet may hold together. Whatever is beyond is left out.
class DrawingBudget
{
public:
    struct Count
    {
        int left;
        /// As many of those wanted as there is room for.
        size_t take(size_t wanted)
        {
            const size_t taken = std::min(wanted, static_cast<size_t>(left));
            left -= static_cast<int>(taken);
            return taken;
        }
        bool takeOne() { return take(1) == 1; }
    };

    static constexpr int maxNesting = 16; ///< of groups in groups

    Count objects{10000}; ///< children of groups included
    Count pathSteps{200000};
    Count guides{20000};
    Count paragraphs{20000};
    Count runs{50000};
    Count letters{1000000};
    Count gradientStops{20000};

    /// Nothing has run out, so that nothing was left out.
    bool complete() const
    {
        for (const Count* count : {&objects, &pathSteps, &guides, &paragraphs, &runs, &letters, &gradientStops}) {
            if (count->left == 0)
                return false;
        }
        return true;
    }
};

} // namespace lumivane::engine
