#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/values/text_table.h"

namespace orva {

/// The controls of a screen as plain objects. A window binds widgets to them,
/// a batch command and a test set and read them directly.

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const Colour&) const = default;
};

namespace colours {
inline constexpr Colour kBlack{0, 0, 0};
inline constexpr Colour kWhite{255, 255, 255};
inline constexpr Colour kBlue{0, 0, 255};
inline constexpr Colour kRed{255, 0, 0};
inline constexpr Colour kPink{255, 192, 192};
inline constexpr Colour kLightYellow{255, 255, 192};
inline constexpr Colour kLightBlue{192, 224, 255};
}  // namespace colours

/// State that every control has. One observer (the window) is told after each
/// change of state; setting the same value again tells nobody.
class Control {
 public:
  explicit Control(std::string name, std::string caption = {}) : name_(std::move(name)), caption_(std::move(caption)) {}
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  const std::string& name() const { return name_; }
  /// "&" marks the shortcut letter.
  const std::string& caption() const { return caption_; }
  void setCaption(std::string_view caption) { change(caption_, std::string(caption)); }
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) { change(enabled_, enabled); }
  bool visible() const { return visible_; }
  void setVisible(bool visible) { change(visible_, visible); }
  Colour foreColour() const { return foreColour_; }
  void setForeColour(Colour colour) { change(foreColour_, colour); }
  Colour backColour() const { return backColour_; }
  void setBackColour(Colour colour) { change(backColour_, colour); }
  const std::string& toolTip() const { return toolTip_; }
  void setToolTip(std::string_view text) { change(toolTip_, std::string(text)); }

  /// Tells the window to show the state again although nothing changed.
  void refresh() { changed(); }
  void observe(std::function<void()> observer) { observer_ = std::move(observer); }
  /// Asks the window to put the keyboard focus here.
  void setFocus() {
    if (focusRequest_) focusRequest_();
  }
  void onFocusRequest(std::function<void()> handler) { focusRequest_ = std::move(handler); }

 protected:
  template <typename T>
  void change(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    changed();
  }
  void changed() {
    if (batches_ > 0) {
      changedInBatch_ = true;
    } else if (observer_) {
      observer_();
    }
  }

 private:
  friend class UpdateBatch;

  std::string name_;
  std::string caption_;
  std::string toolTip_;
  bool enabled_ = true;
  bool visible_ = true;
  Colour foreColour_ = colours::kBlack;
  Colour backColour_ = colours::kWhite;
  std::function<void()> observer_;
  std::function<void()> focusRequest_;
  int batches_ = 0;
  bool changedInBatch_ = false;
};

/// While one lives, changes of the control are collected and its observer is told
/// once at the end. Batches may be nested.
class UpdateBatch {
 public:
  explicit UpdateBatch(Control& control) : control_(control) { ++control_.batches_; }
  UpdateBatch(const UpdateBatch&) = delete;
  UpdateBatch& operator=(const UpdateBatch&) = delete;
  ~UpdateBatch() {
    if (--control_.batches_ > 0 || !control_.changedInBatch_) return;
    control_.changedInBatch_ = false;
    control_.changed();
  }

 private:
  Control& control_;
};

class Label : public Control {
 public:
  using Control::Control;
};

class Button : public Control {
 public:
  using Control::Control;
};

/// Frame or page: a named group that is shown or hidden as one.
class Frame : public Control {
 public:
  using Control::Control;
};

/// Check box or option button: the screen decides what a change means.
class TickControl : public Control {
 public:
  using Control::Control;
  bool value() const { return value_; }
  void setValue(bool value) { change(value_, value); }

 private:
  bool value_ = false;
};

class CheckBox : public TickControl {
 public:
  using TickControl::TickControl;
};

class OptionButton : public TickControl {
 public:
  using TickControl::TickControl;
};

class TextBox : public Control {
 public:
  using Control::Control;
  const std::string& text() const { return text_; }
  void setText(std::string_view text) { change(text_, std::string(text)); }

 private:
  std::string text_;
};

class ListBox : public Control {
 public:
  using Control::Control;
  int count() const { return static_cast<int>(items_.size()); }
  const std::string& item(int index) const { return items_.at(static_cast<std::size_t>(index)); }
  void add(std::string item);
  void clear();
  /// -1 when nothing is selected.
  int selected() const { return selected_; }
  void select(int index);
  /// Text of the selected item, empty when none is selected. Setting it
  /// selects the item of that text (compared without regard to case), if any.
  std::string text() const;
  void setText(std::string_view text);

 private:
  std::vector<std::string> items_;
  int selected_ = -1;
};

class ProgressBar : public Control {
 public:
  using Control::Control;
  int maximum() const { return maximum_; }
  void setMaximum(int maximum) { change(maximum_, maximum); }
  int value() const { return value_; }
  void setValue(int value) { change(value_, value); }

 private:
  int maximum_ = 100;
  int value_ = 0;
};

/// A list in report style with a check box on every line.
class ListView : public Control {
 public:
  struct Column {
    std::string heading;
    /// In twips (1,440 an inch).
    int width = 0;
  };
  struct Line {
    std::vector<std::string> cells;
    bool ticked = false;
    bool bold = false;
    Colour foreColour = colours::kBlack;
    bool operator==(const Line&) const = default;
  };

  using Control::Control;
  const std::vector<Column>& columns() const { return columns_; }
  void setColumns(std::vector<Column> columns);
  int count() const { return static_cast<int>(lines_.size()); }
  const Line& line(int index) const { return lines_.at(static_cast<std::size_t>(index)); }
  void clear();
  void add(Line line);
  void setTicked(int index, bool ticked);
  void setLook(int index, bool bold, Colour foreColour);

 private:
  std::vector<Column> columns_;
  std::vector<Line> lines_;
};

/// A grid of text cells with cell colours and hidden rows. Row 0 holds the
/// headings. Holds a full workbook sheet without one object per cell.
class FlexGrid : public Control {
 public:
  using Control::Control;

  int rowCount() const { return cells_.rowCount(); }
  int columnCount() const { return cells_.columnCount(); }
  std::string_view text(int row, int column) const { return cells_.cell(row, column); }
  void setText(int row, int column, std::string_view text);
  /// The cell's colour; white when none was set. A grid shows at most 256 different colours.
  Colour cellColour(int row, int column) const;
  void setCellColour(int row, int column, Colour colour);
  /// A row of height 0 is hidden.
  bool rowVisible(int row) const;
  void setRowVisible(int row, bool visible);

  void clear();
  /// Takes over the cells of `table`; its row 0 becomes the heading row. Colours and
  /// hidden rows are reset.
  void setTable(const TextTable& table);
  const TextTable& table() const { return cells_; }
  void addColumns(int count);
  /// Scrolls the window so that the row can be seen.
  void showRow(int row);
  int shownRow() const { return shownRow_; }
  /// Position of a heading, compared without regard to case; -1 when absent.
  int findColumn(std::string_view heading) const;

 private:
  std::size_t cellIndex(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columnCount()) + static_cast<std::size_t>(column);
  }
  bool isCell(int row, int column) const {
    return row >= 0 && column >= 0 && row < rowCount() && column < columnCount();
  }
  std::uint8_t paletteIndex(Colour colour);

  TextTable cells_;
  /// One index into the palette a cell, row by row; rows that carry no colour at the end are left out.
  std::vector<std::uint8_t> cellColours_;
  std::vector<Colour> palette_{colours::kWhite};
  std::vector<bool> hidden_;
  int shownRow_ = 0;
};

}  // namespace orva
