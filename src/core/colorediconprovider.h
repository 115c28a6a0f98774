#pragma once

#include <QColor>
#include <QQuickImageProvider>

#include <functional>

// Paints the SVG icons of the resources in the colours of the current theme. QML asks for
// "image://coloredicon/<path under :/icons/>" with an optional "&<colour>" after the path.
class ColoredIconProvider : public QQuickImageProvider
{
public:
    static constexpr const char* providerId = "coloredicon";
    static constexpr const char* darkModeIconColor = "#D8D8D8";

    ColoredIconProvider(std::function<bool()> isDarkMode, std::function<QColor()> applicationColor);

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;

    // Icons are drawn in placeholder colours: the drawing colours become iconColor, the accent
    // placeholder becomes applicationColor.
    static QByteArray recolor(QByteArray svg, const QColor& iconColor, const QColor& applicationColor);

private:
    QColor defaultIconColor() const;
    static qreal renderScale();

    std::function<bool()> m_isDarkMode;
    std::function<QColor()> m_applicationColor;
};
