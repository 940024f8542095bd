#include "controls/HelpButton.h"

#include "assist/modHTMLHelp.h"

#include <QPushButton>
#include <QShortcut>

namespace lumivane {

void connectHelp(QPushButton& cmdHelp, const QString& topic)
{
    QObject::connect(&cmdHelp, &QPushButton::clicked, &cmdHelp, [topic] { ShowHelp(topic); });
    const auto* key = new QShortcut(QKeySequence(Qt::Key_F1), cmdHelp.window());
    QObject::connect(key, &QShortcut::activated, &cmdHelp, [topic] { ShowHelp(topic); });
}

} // namespace lumivane
