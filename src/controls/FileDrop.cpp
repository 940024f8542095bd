#include "controls/FileDrop.h"

#include <QDropEvent>

namespace lumivane {

void acceptCopy(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace lumivane
