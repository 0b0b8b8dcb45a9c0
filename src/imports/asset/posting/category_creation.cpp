#include "imports/asset/posting/category_creation.h"

#include "imports/asset/identifiers.h"
#include "imports/asset/named_values.h"
#include "platform/values/text.h"

namespace orva {
namespace {

constexpr Query kClassificationFilter = {"Defcode='{level I}' and ClassDesc='{description}'"};
constexpr Query kSubclassFilter = {"Defcode='{level I}' and ClassCode='{level II}' and Subclassdesc='{description}'"};

/// Book codes and prefix stay empty: the level above stands for them until someone fills them in.
void addClassification(const ImportRun& run, Recordset& table, const AssetCategory& category,
                       std::string_view description) {
  const std::string& levelOne = category.codeOf(CategoryDepth::kOne);
  const std::string code = nextClassificationCode(run, levelOne);
  table.addNew();
  table.set("Defcode", levelOne);
  table.set("ClassDesc", description);
  table.set("classcode", code);
  table.update();
}

void addSubclass(const ImportRun& run, Recordset& table, const AssetCategory& category, std::string_view description) {
  const std::string& levelOne = category.codeOf(CategoryDepth::kOne);
  const std::string& levelTwo = category.codeOf(CategoryDepth::kTwo);
  const std::string code = nextSubclassCode(run, levelOne, levelTwo);
  table.addNew();
  table.set("Defcode", levelOne);
  table.set("classcode", levelTwo);
  table.set("subClassDesc", description);
  table.set("subclasscode", code);
  table.update();
}

}  // namespace

Recordset& CategoryCreation::table(CategoryDepth depth) {
  const bool isTwo = depth == CategoryDepth::kTwo;
  auto& table = isTwo ? classifications_ : subclasses_;
  if (!table) {
    table = run_.connection().open(isTwo ? "select * from Classification" : "select * from Subclass",
                                   CursorKind::kKeyset, LockKind::kPessimistic);
  }
  return *table;
}

CategoryLevel CategoryCreation::findOrCreate(const AssetCategory& category, CategoryDepth depth,
                                             std::string_view description) {
  const bool isTwo = depth == CategoryDepth::kTwo;
  if (trim(description).empty() || !category.level(CategoryDepth::kOne).isKnown()) return {};
  if (!isTwo && !category.level(CategoryDepth::kTwo).isKnown()) return {};
  Recordset& levels = table(depth);
  levels.filter(composeQuery(isTwo ? kClassificationFilter : kSubclassFilter, run_.dialect(),
                             NamedValues{{"description", description},
                                         {"level I", category.codeOf(CategoryDepth::kOne)},
                                         {"level II", category.codeOf(CategoryDepth::kTwo)}}));
  if (levels.eof()) {
    try {
      (isTwo ? addClassification : addSubclass)(run_, levels, category, description);
    } catch (const ProviderError&) {
      levels.cancel();
      throw;
    }
  }
  return levelOf(levels, depth);
}

}  // namespace orva
