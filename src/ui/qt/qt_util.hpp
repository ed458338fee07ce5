#pragma once
// Small helpers shared by the windows: text between the program's UTF-8 and Qt, fonts in
// the pixel sizes of the layout, and pictures from the program's resources.

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <QWidget>

#include <string>
#include <string_view>

#include "platform/platform.hpp"

namespace vornelt::qt {

inline QString ToQ(std::string_view s) { return QString::fromUtf8(s.data(), qsizetype(s.size())); }
inline std::string FromQ(const QString& s) { return s.toStdString(); }

// A message of the program for a Qt text: line ends inside the program are carriage returns.
QString MessageText(std::string_view s);

// The layout gives font sizes in pixels; 0 keeps the default size of the control.
QFont ControlFont(int pixelSize = 0, bool bold = false);

// A picture of the program's resources (":/images/welcome.svg"), drawn at this size.
QPixmap Picture(const QString& resource, QSize size, qreal devicePixelRatio = 1.0);

// The character index of a Qt text position, and back: the program counts characters, Qt
// counts UTF-16 units.
int CharIndexOf(const QString& s, int utf16Position);
int Utf16PositionOf(const QString& s, int charIndex);

Qt::CursorShape CursorShapeOf(MouseCursor cursor);

// The style and the system font that the layout is measured for (where the system's own
// differ); the application and its tests call it once, after the application object is made.
void SetUpApplicationLook();

// Places a control: left, top, width, height.
inline void Place(QWidget* w, int left, int top, int width, int height) { w->setGeometry(left, top, width, height); }

}  // namespace vornelt::qt
