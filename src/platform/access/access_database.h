#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/access/catalogue.h"
#include "platform/access/file_header.h"

namespace orva::access {

/// How to open a database.
struct OpenOptions {
  std::string password = {};
  bool forWriting = true;
  /// Pages are no secret: a look at the structure alone needs no password.
  bool asksPassword = true;
  FileSystem* files = nullptr;  // nullptr: those of this machine
};

/// An open Access 2000-2003 database file. Changes of rows and of the structure
/// collect in one transaction until `commit` or `rollback`; what is not
/// committed when the object goes is lost.
class AccessDatabase final : public TableLookup {
 public:
  /// Throws `AccessFileError`: no such file, not an Access file (or one of
  /// another version), damaged, `kLoginFailed` for a wrong password, in use by
  /// another program.
  static std::unique_ptr<AccessDatabase> open(const std::string& path, const OpenOptions& options = {});
  /// Makes a new, empty database; throws when the file exists.
  static std::unique_ptr<AccessDatabase> create(const std::string& path, const OpenOptions& options = {});
  /// Keeps other programs away from a database; nothing when one of them has it open.
  static std::unique_ptr<FileLock> lock(FileSystem& files, const std::string& path);
  /// Files beside a database file that belong to it.
  static std::vector<std::string> companionFiles(const std::string& path);
  ~AccessDatabase() override = default;

  const std::string& path() const { return file_->path(); }
  const FileHeader& header() const { return header_; }
  PageFile& file() { return *file_; }
  PageAllocator& allocator() { return *allocator_; }
  Catalogue& catalogue() { return *catalogue_; }

  /// Names of the user's tables, in the order of the catalogue.
  std::vector<std::string> tableNames() const;
  /// The table of this name, system tables included; nullptr when there is none.
  Table* findTable(std::string_view name);
  /// The same; throws `kNoSuchTable`.
  Table& table(std::string_view name);

  void commit();
  void rollback();
  /// Lets go of a file that could not be written to, so that it can be opened anew; what is finished
  /// stands in the side file. Nothing else may be asked of this object.
  void abandon();
  /// Sets the password of the file; an empty one removes it. Belongs to the transaction.
  void setPassword(std::string_view password);

  /// Is told of changes of rows in the user's tables from now on; must live as long as the database.
  void setObserver(RowObserver* observer) { observer_ = observer; }

  /// The table object of a definition page is thrown away, after its table was dropped.
  void forget(PageNumber definition) { tables_.erase(definition); }

 private:
  AccessDatabase() = default;
  void load();
  Table& tableAt(PageNumber definition) override;

  std::unique_ptr<FileLock> lock_;
  std::unique_ptr<PageFile> file_;
  std::unique_ptr<PageAllocator> allocator_;
  FileHeader header_;
  std::unique_ptr<Catalogue> catalogue_;
  std::map<PageNumber, std::unique_ptr<Table>> tables_;
  RowObserver* observer_ = nullptr;
};

/// The moment of now, as the format counts it, in whole seconds of local time.
DateTime currentMoment();

}  // namespace orva::access
