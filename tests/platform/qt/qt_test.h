#pragma once

#include <QCoreApplication>

namespace orva {

inline void handleEvents() { QCoreApplication::processEvents(); }

}  // namespace orva
