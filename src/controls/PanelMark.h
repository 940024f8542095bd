#pragma once

namespace lumivane {

enum class PanelMark { None, Marked, Base };

} // namespace lumivane
