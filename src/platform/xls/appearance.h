#pragma once

#include "platform/xls/compound_file.h"
#include "platform/xls/refusal.h"

namespace orva::xls {

/// The refusal of a file that is no compound file: says what it looks like.
Refusal foreignFile(ByteView file);
/// The refusal of a compound file without a stream named `Workbook`.
Refusal foreignContainer(const CompoundFile& container);
Refusal oldFormat();
Refusal encrypted();

}  // namespace orva::xls
