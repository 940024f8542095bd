#include "viewer/StartPage.h"

#include "viewer/ViewerColors.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumivane {

using namespace Qt::StringLiterals;

StartPage::StartPage(QWidget* parent) : QWidget(parent), m_recent(new QVBoxLayout)
{
    setObjectName(u"startPage"_s);
    auto* title = new QLabel(u"Open a workbook"_s);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    title->setFont(large);
    auto* hint = new QLabel(u"or drop one here. Select cells in it and paste them into a panel."_s);
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, ViewerColors(quiet).quietText);
    hint->setPalette(quiet);
    auto* open = new QPushButton(u"&Open..."_s);
    open->setObjectName(u"startOpenButton"_s);
    open->setIcon(viewerIcon(u"open"_s, palette()));
    connect(open, &QPushButton::clicked, this, &StartPage::openRequested);

    auto* column = new QVBoxLayout;
    column->setSpacing(10);
    column->addWidget(title, 0, Qt::AlignHCenter);
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addSpacing(6);
    column->addWidget(open, 0, Qt::AlignHCenter);
    column->addSpacing(16);
    column->addLayout(m_recent);
    m_recent->setSpacing(2);
    auto* layout = new QVBoxLayout(this);
    layout->addStretch(2);
    layout->addLayout(column);
    layout->addStretch(3);
}

void StartPage::setRecent(const QStringList& paths)
{
    while (QLayoutItem* item = m_recent->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const QString& path : paths) {
        auto* button = new QPushButton(QFileInfo(path).fileName().replace(u'&', u"&&"_s));
        button->setFlat(true);
        button->setToolTip(QDir::toNativeSeparators(path));
        button->setCursor(Qt::PointingHandCursor);
        connect(button, &QPushButton::clicked, this, [this, path] { Q_EMIT recentRequested(path); });
        m_recent->addWidget(button, 0, Qt::AlignHCenter);
    }
}

} // namespace lumivane
