#include "panel/PanelPicture.h"

#include "support/ThrownError.h"
#include "support/XlsxWriter.h"

#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtEndian>
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

    static QByteArray drawing(int width)
    {
        return "<svg xmlns='http://www.w3.org/2000/svg' height='30' width='" + QByteArray::number(width) + "'/>";
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

TEST_F(PictureCache, KeepsPixelsScaleNoticeAndWhatItBelongsTo)
{
    const PictureIdentity identity{u"/data/Größe.lvdu"_s,
                                   {u"a1"_s, u"b2"_s},
                                   {u"/data/Sales.xlsx"_s, 12345, 1'764'000'000'123'456'789},
                                   {u"/data/LVCopy3.xls"_s, 77, 5},
                                   u"B17:F32"_s};
    for (const double scale : {1.0, 1.25, 3.0}) {
        for (const QString& notice : {QString(), u"Not shown here: Umsatz „Süd“."_s}) {
            SCOPED_TRACE(scale);
            PanelPicture written = picture(scale, notice);
            written.identity = identity;
            saveCachedPicture(written, m_file);
            const auto read = loadCachedPicture(m_file);
            ASSERT_TRUE(read);
            EXPECT_EQ(read->image.devicePixelRatio(), scale);
            EXPECT_EQ(read->notice, notice);
            EXPECT_EQ(read->image.pixelColor(59, 29), QColor(Qt::red));
            EXPECT_EQ(read->size(), (TwipsSize{static_cast<float>(900 / scale), static_cast<float>(450 / scale)}));
            EXPECT_EQ(read->identity, identity);
            EXPECT_EQ(cachedIdentity(m_file), identity);
        }
    }
    EXPECT_EQ(QImage(m_file).size(), QSize(60, 30)) << "a bitmap that any program reads";
}

TEST_F(PictureCache, CutsANoticeThatNobodyWouldRead)
{
    const QString notice = QString(4001, u'ü').replace(3999, 2, u"yz"_s);
    saveCachedPicture(picture(1, notice), m_file);
    EXPECT_EQ(loadCachedPicture(m_file)->notice, notice.first(4000));
}

TEST_F(PictureCache, TakesNothingThatItDidNotWriteWhole)
{
    EXPECT_FALSE(loadCachedPicture(m_file) || cachedIdentity(m_file)) << "missing";
    ASSERT_TRUE(picture(1).image.save(m_file, "BMP"));
    EXPECT_FALSE(loadCachedPicture(m_file) || cachedIdentity(m_file)) << "of another program";
    saveCachedPicture(picture(1), m_file);
    const QByteArray whole = bytes();
    for (const QByteArray& damaged : {QByteArray(), whole.first(5), whole.first(whole.size() / 2), whole.chopped(1),
                                      QByteArray(whole).remove(100, 400), QByteArray(5000, '\xff')}) {
        write(damaged);
        EXPECT_FALSE(loadCachedPicture(m_file) || cachedIdentity(m_file)) << damaged.size();
    }
    // Width and height of the info header: 2^30 pixels each.
    write(QByteArray(whole).replace(18, 8, QByteArray::fromHex("0000004000000040")));
    EXPECT_FALSE(loadCachedPicture(m_file));
}

TEST_F(PictureCache, RefusesAFileThatIsNoPictureAndNamesIt)
{
    EXPECT_EQ(failureNumber(loadPictureFile), RuntimeError::FileNotFound);
    write("Region;Umsatz\n");
    EXPECT_EQ(failureNumber(loadPictureFile), 481);
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
    write(drawing(60));
    EXPECT_EQ(loadPictureFile(m_file).image.size(), QSize(60, 30));
    write(drawing(20000000));
    EXPECT_EQ(failureNumber(loadPictureFile), 481);
}

TEST_F(PictureCache, APhotographIsTurnedAsItsCameraSays)
{
    QImageWriter writer(m_file, "jpg");
    writer.setTransformation(QImageIOHandler::TransformationRotate90);
    ASSERT_TRUE(writer.write(picture(1).image));
    EXPECT_EQ(loadPictureFile(m_file).image.size(), QSize(30, 60));
}

TEST_F(PictureCache, ReadsAPackedDrawingUpToItsBound)
{
    const auto packed = [this](const QByteArray& text) {
        const QByteArray deflated = qCompress(text, 9).mid(6).chopped(4);
        const quint32 end[] = {qToLittleEndian(quint32(test::checksum(text.toStdString()))),
                               qToLittleEndian(quint32(text.size()))};
        write(QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + deflated +
              QByteArray(reinterpret_cast<const char*>(end), sizeof end));
    };
    packed(drawing(60));
    EXPECT_EQ(loadPictureFile(m_file).image.size(), QSize(60, 30));
    packed(drawing(60) + QByteArray(40 << 20, ' '));
    EXPECT_EQ(failureNumber(loadPictureFile), 481);
    packed(drawing(60));
    write(bytes().chopped(12));
    EXPECT_EQ(failureNumber(loadPictureFile), 481) << "cut short";
}

TEST(PictureFilter, NamesWhatCanBeReadAndOnlyThat)
{
    const QStringList filters = pictureFileFilter().split(u";;"_s);
    EXPECT_TRUE(filters.first().startsWith(u"All Picture Files (*.bmp *.dib *.gif *.jpg *.jpeg *.png *.svg"_s))
        << filters.first();
    EXPECT_EQ(filters.last(), u"All files (*)"_s);
    EXPECT_TRUE(filters.contains(u"Icons (*.ico *.cur)"_s));
    EXPECT_EQ(filters.filter(u"*.wmf"_s), QStringList()) << "nothing here reads metafiles";
}

} // namespace
