#pragma once

#include <QMdiArea>
#include <QPair>
#include <functional>

namespace lumivane {

/// The ground on which the panels lie. Without a panel it says what can be done.
class DashboardArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit DashboardArea(QWidget* parent = nullptr);

    /// What an empty dashboard shows: a sentence, and below it a list of keys, each with what it does. `wanted` is
    /// asked when the ground is painted without a window: panels may be on their way.
    void setHint(const QString& sentence, const QList<QPair<QString, QString>>& keys, std::function<bool()> wanted);

    // Arranging. Minimized windows lie outside of it, but for their own line; the others are scrolled back to the
    // corner.
    void tile(QVector<QRect> (*places)(const QRect&, int));
    void stack();       ///< with all titles seen; sizes stay
    void lineUpIcons(); ///< the minimized ones, along the bottom

Q_SIGNALS:
    void menuRequested(const QPoint& position, const QPoint& globalPosition);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    /// Windows that are not minimized, or those that are.
    QList<QMdiSubWindow*> windowsToArrange(WindowOrder order, bool minimized) const;
    void scrollToCorner();
    void paintHint(QPainter& painter) const;

    std::function<bool()> m_hintWanted;
    QString m_sentence;
    QList<QPair<QString, QString>> m_keys;
};

/// The colour of a quiet text that can be read on a background, whichever it is: soft where the background leaves room
/// for that, with a contrast of 4.5 : 1 at least.
QColor readableOn(const QColor& background);

} // namespace lumivane
