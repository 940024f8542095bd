#include "panel/PanelPicture.h"

#include "support/ThrownError.h"

#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class PictureCache : public testing::Test
{
protected:
    QTemporaryDir m_folder;
    QString m_file = m_folder.filePath(u"17.bmp"_s);

    static PanelPicture picture(double scale, const QString& notice = {})
    {
        QImage image(60, 30, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(10, 120, 200));
        image.setPixelColor(59, 29, Qt::red);
        image.setDevicePixelRatio(scale);
        return {image, notice};
    }

    void write(const QByteArray& bytes)
    {
        QFile file(m_file);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QByteArray bytes()
    {
        QFile file(m_file);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// The number of the failure, 0 for none.
    int failureNumber(PanelPicture (*load)(const QString&))
    {
        const test::ThrownError failure = test::failureOf([&] { load(m_file); });
        EXPECT_TRUE(failure.text.contains(m_file)) << failure.text;
        return failure.number;
    }
};

TEST_F(PictureCache, KeepsPixelsScaleAndNotice)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (const QString& notice : {QString(), u"Not shown here: Umsatz „Süd“."_s}) {
            SCOPED_TRACE(scale);
            saveCachedPicture(picture(scale, notice), m_file);
            const PanelPicture read = loadCachedPicture(m_file);
            EXPECT_EQ(read.image.devicePixelRatio(), scale);
            EXPECT_EQ(read.notice, notice);
            EXPECT_EQ(read.image.size(), QSize(60, 30));
            EXPECT_EQ(read.image.pixelColor(59, 29), QColor(Qt::red));
            EXPECT_EQ(read.size(), (TwipsSize{static_cast<float>(900 / scale), static_cast<float>(450 / scale)}));
        }
    }
    EXPECT_TRUE(bytes().startsWith("BM")) << "a bitmap that any program reads";
}

TEST_F(PictureCache, TakesABitmapOfAnotherProgramAtScaleOne)
{
    QImage image = picture(1).image;
    for (const int dotsPerMetre : {0, 2835, 3000, 3779}) {
        image.setDotsPerMeterX(dotsPerMetre);
        ASSERT_TRUE(image.save(m_file, "BMP"));
        EXPECT_EQ(loadCachedPicture(m_file).image.devicePixelRatio(), 1) << dotsPerMetre;
    }
}

TEST_F(PictureCache, RefusesWhatIsNoPictureAndNamesTheFile)
{
    EXPECT_EQ(failureNumber(loadCachedPicture), RuntimeError::FileNotFound);
    EXPECT_EQ(failureNumber(loadPictureFile), RuntimeError::FileNotFound);
    for (const QByteArray& damaged :
         {QByteArray(), QByteArray("BM"), QByteArray("Region;Umsatz\n"), QByteArray(5000, '\xff')}) {
        write(damaged);
        EXPECT_EQ(failureNumber(loadCachedPicture), 481) << damaged.left(20).constData();
        EXPECT_EQ(failureNumber(loadPictureFile), 481);
    }
}

TEST_F(PictureCache, SurvivesAHeaderThatPromisesMoreThanThereIs)
{
    saveCachedPicture(picture(1), m_file);
    QByteArray huge = bytes();
    // Width and height of the info header: 2^30 pixels each.
    huge.replace(18, 8, QByteArray::fromHex("0000004000000040"));
    write(huge);
    EXPECT_EQ(failureNumber(loadCachedPicture), 481);
}

TEST_F(PictureCache, LeavesTheOldPictureWhereItCannotWrite)
{
    const QString nowhere = m_folder.filePath(u"gone/17.bmp"_s);
    const test::ThrownError failure = test::failureOf([&] { saveCachedPicture(picture(1), nowhere); });
    EXPECT_EQ(failure.number, RuntimeError::PathAccess);
    EXPECT_TRUE(failure.text.contains(nowhere)) << failure.text;
}

TEST_F(PictureCache, RefusesADrawingOfMorePixelsThanCanBeKept)
{
    const auto drawing = [this](int width) {
        write("<svg xmlns='http://www.w3.org/2000/svg' height='30' width='" + QByteArray::number(width) + "'/>");
    };
    drawing(60);
    EXPECT_EQ(loadPictureFile(m_file).image.size(), QSize(60, 30));
    drawing(20000000);
    EXPECT_EQ(failureNumber(loadPictureFile), 481);
}

TEST_F(PictureCache, APhotographIsTurnedAsItsCameraSays)
{
    QImageWriter writer(m_file, "jpg");
    writer.setTransformation(QImageIOHandler::TransformationRotate90);
    ASSERT_TRUE(writer.write(picture(1).image));
    EXPECT_EQ(loadPictureFile(m_file).image.size(), QSize(30, 60));
}

TEST(PictureFilter, NamesWhatCanBeReadAndOnlyThat)
{
    const QStringList filters = pictureFileFilter().split(u";;"_s);
    EXPECT_TRUE(filters.first().startsWith(u"All Picture Files (*.bmp *.dib *.gif *.jpg *.jpeg *.png *.svg"_s))
        << filters.first().toStdString();
    EXPECT_EQ(filters.last(), u"All files (*)"_s);
    EXPECT_TRUE(filters.contains(u"Bitmaps (*.bmp *.dib)"_s));
    EXPECT_TRUE(filters.contains(u"Icons (*.ico *.cur)"_s));
    EXPECT_EQ(filters.filter(u"*.wmf"_s), QStringList()) << "nothing here reads metafiles";
}

} // namespace
