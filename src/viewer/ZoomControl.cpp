#include "viewer/ZoomControl.h"

#include "viewer/OpenSheet.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int zoomSteps[] = {25, 50, 75, 90, 100, 110, 125, 150, 175, 200, 250, 300, 400};

// The middle of the slider is 100 percent; both halves are even by themselves.
int sliderOf(int percent)
{
    return percent < 100 ? (percent - 100) * 100 / (100 - smallestZoom) : (percent - 100) * 100 / (largestZoom - 100);
}

int zoomOfSlider(int value)
{
    const int percent = value < 0 ? 100 + value * (100 - smallestZoom) / 100 : 100 + value * (largestZoom - 100) / 100;
    return (percent + 2) / 5 * 5;
}

} // namespace

ZoomControl::ZoomControl(QWidget* parent) : QWidget(parent), m_slider(new QSlider(Qt::Horizontal))
{
    setObjectName(u"zoomControl"_s);
    m_slider->setObjectName(u"zoomSlider"_s);
    m_slider->setAccessibleName(u"Zoom"_s);
    m_slider->setRange(-100, 100);
    m_slider->setFixedWidth(110);
    m_slider->setFocusPolicy(Qt::NoFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(2);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto* smaller = button(u"zoomOutButton"_s, u"\u2212"_s, u"Zoom out (Ctrl+-)"_s);
    auto* larger = button(u"zoomInButton"_s, u"+"_s, u"Zoom in (Ctrl++)"_s);
    m_reset = button(u"zoomResetButton"_s, u"100%"_s, u"Back to 100% (Ctrl+0)"_s);
    m_reset->setFixedWidth(fontMetrics().horizontalAdvance(u"400%"_s) + 16);
    for (QWidget* part : {static_cast<QWidget*>(smaller), static_cast<QWidget*>(m_slider),
                          static_cast<QWidget*>(larger), static_cast<QWidget*>(m_reset)})
        layout->addWidget(part);
    connect(smaller, &QToolButton::clicked, this, [this] { Q_EMIT zoomRequested(nextStep(m_percent, false)); });
    connect(larger, &QToolButton::clicked, this, [this] { Q_EMIT zoomRequested(nextStep(m_percent, true)); });
    connect(m_reset, &QToolButton::clicked, this, [this] { Q_EMIT zoomRequested(100); });
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { Q_EMIT zoomRequested(zoomOfSlider(value)); });
}

QToolButton* ZoomControl::button(const QString& objectName, const QString& text, const QString& hint)
{
    auto* result = new QToolButton;
    result->setObjectName(objectName);
    result->setText(text);
    result->setToolTip(hint);
    result->setAccessibleName(hint);
    result->setAutoRaise(true);
    result->setFocusPolicy(Qt::NoFocus);
    return result;
}

void ZoomControl::setZoom(int percent)
{
    m_percent = percent;
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(sliderOf(percent));
    m_reset->setText(u"%1%"_s.arg(percent));
}

int ZoomControl::nextStep(int percent, bool larger)
{
    if (larger) {
        for (const int step : zoomSteps) {
            if (step > percent)
                return step;
        }
        return largestZoom;
    }
    for (auto step = std::rbegin(zoomSteps); step != std::rend(zoomSteps); ++step) {
        if (*step < percent)
            return *step;
    }
    return smallestZoom;
}

} // namespace lumivane
