#include "ExpectedPicture.h"

#include <QDir>
#include <QPainter>
#include <cstdlib>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int alike = 24;            // in each of red, green and blue
constexpr double strayPixels = 1e-3; // of all

bool differ(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) > alike || std::abs(qGreen(a) - qGreen(b)) > alike ||
           std::abs(qBlue(a) - qBlue(b)) > alike;
}

/// The pictures side by side, and what differs in black.
QImage besideEachOther(const QImage& expected, const QImage& got, const QImage& difference)
{
    constexpr int gap = 4;
    const int width = std::max(expected.width(), got.width());
    QImage all(3 * width + 2 * gap, std::max(expected.height(), got.height()), QImage::Format_RGB32);
    all.fill(Qt::gray);
    QPainter painter(&all);
    painter.drawImage(0, 0, expected);
    painter.drawImage(width + gap, 0, got);
    painter.drawImage(2 * (width + gap), 0, difference);
    return all;
}

} // namespace

void expectPicture(const QImage& got, const QString& name)
{
    const QString stored = QStringLiteral(LUMIVANE_TEST_DATA) + u'/' + name + u".png"_s;
    const QImage expected = QImage(stored).convertToFormat(QImage::Format_RGB32);
    QImage difference(got.size(), QImage::Format_RGB32);
    difference.fill(Qt::white);
    int strays = 0;
    if (expected.size() == got.size()) {
        for (int y = 0; y < got.height(); ++y)
            for (int x = 0; x < got.width(); ++x)
                if (differ(expected.pixel(x, y), got.pixel(x, y))) {
                    difference.setPixel(x, y, 0xff000000);
                    ++strays;
                }
        if (strays <= strayPixels * got.width() * got.height())
            return;
    }
    const QDir folder(QDir::tempPath() + u"/lumivane-pictures"_s);
    folder.mkpath(u"."_s);
    const QString written = folder.filePath(name + u".png"_s);
    got.save(written);
    besideEachOther(expected, got, difference).save(folder.filePath(name + u"-compared.png"_s));
    ADD_FAILURE() << name.toStdString() << ": " << strays << " pixels differ.\nexpected: " << stored.toStdString()
                  << "\ngot:      " << written.toStdString()
                  << "\nBoth and their difference: " << folder.filePath(name + u"-compared.png"_s).toStdString();
}

} // namespace lumivane::test
