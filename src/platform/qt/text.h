#pragma once

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

#include "platform/controls.h"

namespace orva::qt {

inline QString toQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string fromQt(const QString& text) { return text.toStdString(); }
inline QColor toQt(Colour colour) { return QColor(colour.red, colour.green, colour.blue); }

/// Screen pixels of a length in twips (1,440 an inch, 96 logical pixels an inch).
constexpr int pixelsOfTwips(int twips) { return twips / 15; }

}  // namespace orva::qt
