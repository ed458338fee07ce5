#include "ui/qt/qt_util.hpp"

#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QSvgRenderer>

namespace vornelt::qt {

QString MessageText(std::string_view s) {
    QString q = ToQ(s);
    q.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    q.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return q;
}

void SetUpApplicationLook() {
#if !defined(Q_OS_MACOS)
    // The layout is measured for a compact style and a 13-pixel system font.
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) QApplication::setStyle(fusion);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
#endif
}

QFont ControlFont(int pixelSize, bool bold) {
    QFont f = QApplication::font();
    if (pixelSize > 0) f.setPixelSize(pixelSize);
    f.setBold(bold);
#if !defined(Q_OS_MACOS)
    // The small captions of the layout were measured for a narrow system font.
    if (pixelSize > 0 && pixelSize <= 10) f.setStretch(QFont::SemiCondensed);
#endif
    return f;
}

QPixmap Picture(const QString& resource, QSize size, qreal devicePixelRatio) {
    QPixmap pixmap(size * devicePixelRatio);
    pixmap.fill(Qt::transparent);
    if (resource.endsWith(QLatin1String(".svg"))) {
        QSvgRenderer renderer(resource);
        QPainter p(&pixmap);
        p.setRenderHint(QPainter::Antialiasing);
        renderer.render(&p);
    } else {
        pixmap.load(resource);
        pixmap = pixmap.scaled(size * devicePixelRatio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

int CharIndexOf(const QString& s, int utf16Position) {
    int chars = 0;
    for (int i = 0; i < utf16Position && i < s.size(); ++i)
        if (!s.at(i).isLowSurrogate()) ++chars;
    return chars;
}

int Utf16PositionOf(const QString& s, int charIndex) {
    int i = 0;
    for (int chars = 0; i < s.size() && chars < charIndex; ++i)
        if (!s.at(i).isLowSurrogate()) ++chars;
    // Not inside a pair.
    while (i < s.size() && s.at(i).isLowSurrogate()) ++i;
    return i;
}

Qt::CursorShape CursorShapeOf(MouseCursor cursor) {
    switch (cursor) {
        case MouseCursor::Wait: return Qt::WaitCursor;
        case MouseCursor::FingerPointer: return Qt::PointingHandCursor;
        case MouseCursor::StandardPointer: break;
    }
    return Qt::ArrowCursor;
}

}  // namespace vornelt::qt
