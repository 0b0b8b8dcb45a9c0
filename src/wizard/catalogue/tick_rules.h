#pragma once

#include "wizard/catalogue/field_row.h"
#include "wizard/selection.h"

namespace orva {

/// The user ticks or unticks a line. A mandatory line stays ticked, the accumulated depreciation
/// of the additional books excepted; when assets are modified, the three locations are ticked and
/// unticked together, since a location is found by all three.
void tickLine(Catalogue& catalogue, int index, bool ticked, const Selection& selection);

/// Ticks every line but the accumulated depreciation of the additional books. Returns false, and changes
/// nothing, when all of them were ticked already.
bool tickAll(Catalogue& catalogue);

int tickedLines(const Catalogue& catalogue);

}  // namespace orva
