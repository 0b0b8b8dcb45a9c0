#pragma once

#include "platform/xls/cell_table.h"

namespace orva::xls {

/// Reads the cells of one sheet: the records from a BOF to its EOF.
class SheetReader {
 public:
  /// `datesByFormat` tells for every cell format whether it shows dates. Texts
  /// that stand in the cells themselves are added to `texts`.
  SheetReader(TextTable& texts, CellTable& cells, const std::vector<bool>& datesByFormat)
      : texts_(texts), cells_(cells), datesByFormat_(datesByFormat) {}

  /// Throws `Refusal` (damaged).
  void read(RecordStream records);

 private:
  /// Row, column and cell format, the first six bytes of every cell record.
  struct Place {
    std::uint16_t row = 0;
    std::uint8_t column = 0;
    std::uint16_t format = 0;
  };

  void readRecord(RecordStream& records, const Record& record);
  void readFormula(RecordStream& records, ByteView body);
  void readFormulaText(RecordStream& records, Place place);
  void readMulRk(ByteView body);
  void readBoolErr(ByteView body);
  Place placeOf(ByteView body, std::size_t minimum) const;
  void addNumber(Place place, double value);
  void addText(Place place, TextNumber number);
  void addTruthOrError(Place place, std::uint8_t value, bool isError);

  TextTable& texts_;
  CellTable& cells_;
  const std::vector<bool>& datesByFormat_;
};

}  // namespace orva::xls
