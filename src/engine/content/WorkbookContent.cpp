#include "engine/content/WorkbookContent.h"

namespace lumivane::engine {

qint64 WorkbookContent::bytes() const
{
    return qint64(sizeof(*this)) + texts.bytes() + qint64(styles.cells.capacity() * sizeof(CellStyle)) +
           qint64(styles.fonts.capacity() * sizeof(FontStyle)) +
           qint64(styles.borders.capacity() * sizeof(BorderStyle)) +
           qint64(styles.fills.capacity() * sizeof(FillStyle));
}

} // namespace lumivane::engine
