#pragma once

#include <QApplication>
#include <QPushButton>

namespace orva::qt {

/// The look of every window: the same light style on each system, so that the colours of
/// the results keep their contrast.
void applyLook(QApplication& application);

/// The button that carries the page on.
void makePrimary(QPushButton* button, bool primary = true);

}  // namespace orva::qt
