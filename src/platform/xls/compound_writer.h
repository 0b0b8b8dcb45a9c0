#pragma once

#include "platform/xls/bytes.h"

namespace orva::xls {

/// A compound file that holds nothing but one stream named `Workbook`.
Bytes compoundFileOf(Bytes workbookStream);

}  // namespace orva::xls
