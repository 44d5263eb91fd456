#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

#include "host/contract/TBitmap.h"

namespace kk {

/// The program's own pictures, by the names of the resources. They are SVG drawings compiled into
/// the program, sharp at every size; their colours are those of the application's palette at the
/// time, so that they suit light and dark ground. What was rendered is kept until the palette is
/// another. A name without a drawing is no image and one line in the log. Main thread, with a
/// QGuiApplication.
class TDrawings {
 public:
  /// An icon that renders itself when it is painted: for each size, scale and mode (disabled,
  /// selected), and in the colours of that moment, so nobody has to set it anew. Null for no image.
  static QIcon Icon(const TBitmap& iBitmap);

  /// The picture in the middle of a rectangle of this size, in device-independent pixels, for a
  /// screen with this ratio of device pixels to them. On a selected row iMode is QIcon::Selected.
  /// Null for no image.
  static QPixmap Pixmap(const TBitmap& iBitmap, QSize iSize, qreal iRatio,
                        QIcon::Mode iMode = QIcon::Normal);

  /// The size it was drawn for, in device-independent pixels; (0, 0) for no image.
  static QSize NaturalSize(const TBitmap& iBitmap);

  /// The program's own icon, for windows and the tray.
  static QIcon ProgramIcon();
};

}  // namespace kk
