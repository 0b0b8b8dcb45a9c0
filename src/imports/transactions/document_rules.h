#pragma once

#include <array>

#include "imports/transactions/transaction_checks.h"

namespace orva {

/// The checks of the voucher and of the party's bill, which child assets and cost breakups share, in the order in
/// which they run within their columns.
template <class Row>
inline constexpr std::array kDocumentRules{
    Rule<Row>{
        .column = "VCHRNO", .fails = exceedsSize, .text = "Voucher No : {value} exceeds the maximum length {size}"},
    Rule<Row>{
        .column = "BILLNO", .fails = exceedsSize, .text = "Party Bill no : {value} exceeds the maximum length {size}"},
    Rule<Row>{.column = "VCHRDATE", .fails = isBlank, .text = "Voucher Date should not be blank", .namesBlank = true},
    Rule<Row>{
        .column = "BILLDATE", .fails = isBlank, .text = "Party Bill Date should not be blank", .namesBlank = true},
    Rule<Row>{.column = "VCHRDATE", .fails = isNoDate, .text = "Invalid Voucher Date : {value}"},
    Rule<Row>{.column = "BILLDATE", .fails = isNoDate, .text = "Invalid Party Bill Date : {value}"},
    Rule<Row>{.column = "VCHRDATE",
              .fails = isOutsideServerRange,
              .text = "Date out of Range.Invalid Voucher Date : {value}"},
    Rule<Row>{.column = "BILLDATE",
              .fails = isOutsideServerRange,
              .text = "Date out of Range.Invalid Party Bill Date : {value}"},
};

}  // namespace orva
