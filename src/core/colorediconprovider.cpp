#include "colorediconprovider.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QSvgRenderer>

namespace {
const QStringList drawingColors = {QStringLiteral("#2196F3"), QStringLiteral("#B1B1B1"),
                                   QStringLiteral("#FFFFFF")};
const QString accentColor = QStringLiteral("#3F51B5");
// Screens of ratio 1 still get a larger picture, which the view scales down smoothly.
constexpr qreal lowDensityScale = 1.4;

QByteArray replaceColor(const QByteArray& svg, const QString& from, const QString& to)
{
    QString text = QString::fromUtf8(svg);
    text.replace(from, to, Qt::CaseInsensitive);
    return text.toUtf8();
}
} // namespace

ColoredIconProvider::ColoredIconProvider(std::function<bool()> isDarkMode,
                                         std::function<QColor()> applicationColor)
    : QQuickImageProvider(QQuickImageProvider::Pixmap)
    , m_isDarkMode(std::move(isDarkMode))
    , m_applicationColor(std::move(applicationColor))
{}

QPixmap ColoredIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize)
{
    Q_UNUSED(requestedSize)
    const int separator = id.indexOf(QLatin1Char('&'));
    QFile file(QStringLiteral(":/icons/") + id.left(separator));
    if (!file.open(QIODevice::ReadOnly))
        return QPixmap();
    const QColor iconColor = separator < 0 ? defaultIconColor() : QColor(id.mid(separator + 1));

    QSvgRenderer renderer(recolor(file.readAll(), iconColor, m_applicationColor()));
    const qreal scale = renderScale();
    const QSize defaultSize = renderer.defaultSize();
    QPixmap pixmap(qRound(defaultSize.width() * scale), qRound(defaultSize.height() * scale));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    painter.end();
    if (size)
        *size = pixmap.size();
    return pixmap;
}

QByteArray ColoredIconProvider::recolor(QByteArray svg, const QColor& iconColor,
                                        const QColor& applicationColor)
{
    for (const QString& drawingColor : drawingColors)
        svg = replaceColor(svg, drawingColor, iconColor.name());
    return replaceColor(svg, accentColor, applicationColor.name());
}

QColor ColoredIconProvider::defaultIconColor() const
{
    return m_isDarkMode() ? QColor(QString::fromLatin1(darkModeIconColor)) : m_applicationColor();
}

qreal ColoredIconProvider::renderScale()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const qreal ratio = screen ? screen->devicePixelRatio() : 1.0;
    return ratio <= 1.0 ? lowDensityScale : ratio;
}
