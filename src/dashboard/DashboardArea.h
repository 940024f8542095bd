#pragma once

#include <QMdiArea>

namespace lumivane {

/// The ground on which the panels lie. Without a panel it says what could be done.
class DashboardArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit DashboardArea(QWidget* parent = nullptr);

Q_SIGNALS:
    void menuRequested(const QPoint& position, const QPoint& globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
};

} // namespace lumivane
