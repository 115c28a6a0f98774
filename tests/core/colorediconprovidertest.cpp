#include "core/colorediconprovider.h"
#include "testlib/testenvironment.h"

#include <QApplication>
#include <QtTest>

class ColoredIconProviderTest : public QObject
{
    Q_OBJECT

private slots:
    void drawingColoursTakeTheIconColourAndTheAccentItsOwn();
    void iconTakesThemeOrRequestedColour_data();
    void iconTakesThemeOrRequestedColour();
    void unknownIconIsNull();

private:
    static QColor mostOpaqueColor(const QImage& image);
};

QColor ColoredIconProviderTest::mostOpaqueColor(const QImage& image)
{
    QColor best(Qt::transparent);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() > best.alpha())
                best = pixel;
        }
    }
    return best;
}

void ColoredIconProviderTest::drawingColoursTakeTheIconColourAndTheAccentItsOwn()
{
    const QByteArray svg(
        "<a stroke=\"#2196f3\"/><b fill=\"#B1B1B1\"/><c fill=\"#ffffff\"/><d fill=\"#3F51B5\"/>");
    QCOMPARE(
        ColoredIconProvider::recolor(svg, QColor(QStringLiteral("#123456")),
                                     QColor(QStringLiteral("#abcdef"))),
        QByteArray("<a stroke=\"#123456\"/><b fill=\"#123456\"/><c fill=\"#123456\"/><d fill=\"#abcdef\"/>"));
}

void ColoredIconProviderTest::iconTakesThemeOrRequestedColour_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QColor>("expected");
    QTest::newRow("light takes the accent") << false << "add.svg" << QColor(QStringLiteral("#1E88E5"));
    QTest::newRow("dark takes light grey") << true << "add.svg" << QColor(QStringLiteral("#D8D8D8"));
    QTest::newRow("requested colour wins") << true << "add.svg&#FFAB40" << QColor(QStringLiteral("#FFAB40"));
}

void ColoredIconProviderTest::iconTakesThemeOrRequestedColour()
{
    QFETCH(bool, dark);
    QFETCH(QString, id);
    QFETCH(QColor, expected);
    ColoredIconProvider provider([dark] { return dark; }, [] { return QColor(QStringLiteral("#1E88E5")); });
    QSize size;
    const QPixmap pixmap = provider.requestPixmap(id, &size, QSize(10, 10));
    // Screens of ratio 1 get the drawing 1.4 times larger; the requested size does not count.
    QCOMPARE(size, QSize(34, 34));
    const QColor drawn = mostOpaqueColor(pixmap.toImage());
    QCOMPARE(drawn.alpha(), 255);
    QCOMPARE(drawn.rgb(), expected.rgb());
}

void ColoredIconProviderTest::unknownIconIsNull()
{
    ColoredIconProvider provider([] { return false; }, [] { return QColor(Qt::blue); });
    QVERIFY(provider.requestPixmap(QStringLiteral("no/such/icon.svg"), nullptr, QSize()).isNull());
}

NORVEL_TEST_MAIN(ColoredIconProviderTest)
#include "colorediconprovidertest.moc"
