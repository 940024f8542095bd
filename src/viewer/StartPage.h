#pragma once

#include <QWidget>

class QVBoxLayout;

namespace lumivane {

/// What a workbook window shows while it has no workbook: how to get one, and those opened last.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);
    void setRecent(const QStringList& paths);

Q_SIGNALS:
    void openRequested();
    void recentRequested(const QString& path);

private:
    QVBoxLayout* m_recent;
};

} // namespace lumivane
