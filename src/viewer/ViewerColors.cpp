#include "viewer/ViewerColors.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

// Outside the namespace, as the macro demands.
static void registerViewerIcons()
{
    Q_INIT_RESOURCE(viewer);
}

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QColor mixed(const QColor& a, const QColor& b, double share)
{
    const auto mix = [share](int x, int y) { return static_cast<int>(x + (y - x) * share); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor translucent(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

ViewerColors::ViewerColors(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    dark = window.lightness() < text.lightness();
    accent = dark ? QColor(0x4f, 0xa3, 0xdc) : QColor(0x1f, 0x74, 0xb0);
    ground = mixed(window, text, dark ? 0.06 : 0.05);
    header = mixed(window, text, dark ? 0.03 : 0.01);
    headerTouched = mixed(header, accent, dark ? 0.30 : 0.16);
    headerWhole = mixed(header, accent, dark ? 0.55 : 0.34);
    headerText = mixed(window, text, 0.68);
    headerTextStrong = dark ? text : mixed(accent, Qt::black, 0.35);
    headerLine = mixed(window, text, dark ? 0.22 : 0.17);
    selection = translucent(QColor(0x1f, 0x74, 0xb0), 36);
    paneLine = QColor(0x6b, 0x7b, 0x8b);
    quietText = mixed(window, text, 0.6);
    noticeGround = mixed(window, QColor(0xf0, 0xb4, 0x29), dark ? 0.24 : 0.20);
    noticeLine = mixed(window, QColor(0xd9, 0x94, 0x0a), dark ? 0.5 : 0.6);
}

QIcon viewerIcon(const QString& name, const QPalette& palette)
{
    registerViewerIcons();
    QFile file(u":/viewer/icons/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray drawing = file.readAll();
    const bool dark = ViewerColors(palette).dark;
    if (dark)
        drawing.replace("#41566b", "#c3ced9").replace("#2f7fb8", "#63b1e6");
    const auto rendered = [&](const QByteArray& svg, int pixels) {
        QBuffer buffer;
        buffer.setData(svg);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(QSize(pixels, pixels));
        return QPixmap::fromImage(reader.read());
    };
    const QByteArray faded =
        QByteArray(drawing).replace("<svg ", dark ? "<svg opacity=\"0.38\" " : "<svg opacity=\"0.42\" ");
    QIcon icon;
    for (const int pixels : {16, 24, 32, 48, 64}) {
        icon.addPixmap(rendered(drawing, pixels));
        icon.addPixmap(rendered(faded, pixels), QIcon::Disabled);
    }
    return icon;
}

} // namespace lumivane
