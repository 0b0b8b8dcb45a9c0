#include "platform/odbc/server/tds_session.h"

#include <poll.h>
#include <sys/socket.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "platform/embedded/session.h"
#include "platform/embedded/sqlite_store.h"
#include "platform/odbc/server/tds_server.h"
#include "platform/values/text.h"

namespace orva::tds {
namespace {

constexpr std::size_t kHeader = 8;
constexpr std::size_t kMostInPacket = 4096 - kHeader;
constexpr int kMostStall = 20'000;  // milliseconds
constexpr unsigned kSqlBatch = 0x01;
constexpr unsigned kRemoteCall = 0x03;
constexpr unsigned kAttention = 0x06;
constexpr unsigned kLogin = 0x10;
constexpr unsigned kPreLogin = 0x12;

/// The client has gone, or is meant to think so of the server.
struct Gone {};

/// The error of the server that stands behind a provider's number of the engine.
ServerError serverError(const ProviderError& error) {
  static const std::map<std::int32_t, int> kNumbers = {
      {provider_number::kSyntaxOrExists, 170},  {provider_number::kNoSuchTable, 208},
      {provider_number::kErrorsOccurred, 2705}, {provider_number::kUnspecified, 2627},
      {provider_number::kIntegrity, 515},       {provider_number::kDataOverflow, 8152},
      {provider_number::kTypeMismatch, 245},
  };
  const auto found = kNumbers.find(error.number());
  return {found == kNumbers.end() ? 50000 : found->second, error.description()};
}

/// "@P1" and the like, outside quotes, replaced by the literals.
std::string withParameters(const std::string& text, const std::vector<Parameter>& parameters) {
  std::string result;
  char quote = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"' || c == '[') {
      quote = c == '[' ? ']' : c;
    } else if (c == '@' && i + 1 < text.size() && (text[i + 1] == 'P' || text[i + 1] == 'p')) {
      std::size_t end = i + 2;
      std::size_t number = 0;
      for (; end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])); ++end) {
        number = number * 10 + static_cast<std::size_t>(text[end] - '0');
      }
      result += parameters.at(number - 1).literal;
      i = end - 1;
      continue;
    }
    result += c;
  }
  return result;
}

/// "N'...'" is a plain literal to the engine, whose texts are all Unicode.
std::string withoutNationalMarks(const std::string& text) {
  std::string result;
  bool inside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool opens = !inside && text[i] == 'N' && i + 1 < text.size() && text[i + 1] == '\'';
    const bool partOfWord = i > 0 && (std::isalnum(static_cast<unsigned char>(text[i - 1])) || text[i - 1] == '_');
    if (text[i] == '\'') inside = !inside;
    if (!opens || partOfWord) result += text[i];
  }
  return result;
}

class Conversation {
 public:
  Conversation(Server& server, int socket) : server_(server), socket_(socket) {}

  void run() {
    for (;;) {
      unsigned type = 0;
      const std::string message = receive(type);
      Reader in(message);
      if (type == kPreLogin)
        preLogin();
      else if (type == kLogin)
        login(in);
      else if (type == kSqlBatch)
        batch(in);
      else if (type == kRemoteCall)
        remoteCalls(in);
      else if (type == kAttention)
        writeDone(out_, Done::kBatch, done_status::kAttention);
      else
        throw Gone();
      send(true);
    }
  }

 private:
  std::string read(std::size_t length) {
    std::string bytes(length, '\0');
    std::size_t have = 0;
    while (have < length) {
      const ssize_t got = recv(socket_, bytes.data() + have, length - have, 0);
      if (got <= 0) throw Gone();
      have += static_cast<std::size_t>(got);
    }
    return bytes;
  }

  std::string receive(unsigned& type) {
    std::string message;
    for (;;) {
      const std::string header = read(kHeader);
      type = static_cast<unsigned char>(header[0]);
      const std::size_t length =
          static_cast<std::size_t>(static_cast<unsigned char>(header[2])) << 8 | static_cast<unsigned char>(header[3]);
      if (length < kHeader) throw Gone();
      message += read(length - kHeader);
      if ((header[1] & 1) != 0) return message;
    }
  }

  /// Sends what is written so far in full packets; at the end of the answer, all of it.
  void send(bool isEnd) {
    const std::string body = out_.take();
    out_ = {};
    std::string packets;
    std::size_t at = 0;
    do {
      const std::size_t part = std::min(kMostInPacket, body.size() - at);
      const bool isLast = isEnd && at + part == body.size();
      if (!isEnd && part < kMostInPacket) break;
      const std::size_t length = part + kHeader;
      packets += '\x04';
      packets += isLast ? '\x01' : '\x00';
      packets += static_cast<char>(length >> 8);
      packets += static_cast<char>(length & 0xFF);
      packets.append("\0\0\1\0", 4);
      packets += body.substr(at, part);
      at += part;
    } while (at < body.size());
    out_.raw(std::string_view(body).substr(at));
    for (std::size_t sent = 0; sent < packets.size();) {
      const ssize_t done = ::send(socket_, packets.data() + sent, packets.size() - sent, MSG_NOSIGNAL);
      if (done <= 0) throw Gone();
      sent += static_cast<std::size_t>(done);
    }
  }

  /// True when the client speaks in the middle of an answer: it wants no more of it.
  bool isInterrupted() const {
    pollfd waiting{.fd = socket_, .events = POLLIN, .revents = 0};
    return poll(&waiting, 1, 0) > 0;
  }

  /// Version 10.0, no encryption.
  void preLogin() {
    out_.raw(std::string_view("\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF\x0A\x00\x06\x40\x00\x00\x02", 18));
  }

  void login(Reader& in) {
    const std::string_view message = in.rest();
    const auto field = [&](std::size_t position) {
      Reader at(message.substr(position));
      const unsigned offset = at.u16();
      return Reader(message.substr(offset)).raw(std::size_t{at.u16()} * 2);
    };
    std::string password(field(44));
    for (char& c : password) {
      const unsigned plain = static_cast<unsigned char>(c) ^ 0xA5U;
      c = static_cast<char>((plain >> 4 | plain << 4) & 0xFF);
    }
    const std::string user = fromWideBytes(field(40));
    const std::string catalog = fromWideBytes(field(68));
    if (user != server_.user() || fromWideBytes(password) != server_.password()) {
      return refuse({18456, "Login failed for user '" + user + "'."});
    }
    const std::string file = server_.folder() + "/" + (catalog.empty() ? "master" : catalog) + ".mdb";
    if (!std::filesystem::exists(file)) {
      return refuse({4060, "Cannot open database \"" + catalog + "\" requested by the login. The login failed."});
    }
    auto store = std::make_unique<embedded::SqliteStore>(file, "");
    store_ = store.get();
    engine_ = std::make_unique<embedded::Session>(std::move(store), SqlDialect::kSqlServer);
    writeLogin(out_, catalog);
    writeDone(out_, Done::kBatch, done_status::kFinal);
  }

  void refuse(const ServerError& error) {
    writeMessage(out_, error, 14);
    writeDone(out_, Done::kBatch, done_status::kError);
  }

  static void skipHeaders(Reader& in) {
    const std::uint32_t length = in.u32();
    in.raw(length - 4);
  }

  void batch(Reader& in) {
    skipHeaders(in);
    const std::string text = fromWideBytes(in.rest());
    runStatement(text, Done::kBatch, done_status::kFinal);
  }

  void remoteCalls(Reader& in) {
    skipHeaders(in);
    for (;;) {
      const unsigned length = in.u16();
      const std::string name = length == 0xFFFF ? "#" + std::to_string(in.u16()) : toLower(in.text(length));
      in.u16();
      std::vector<Parameter> parameters;
      bool another = false;
      while (!in.atEnd()) {
        const auto next = static_cast<unsigned char>(in.rest()[0]);
        another = next == 0x80 || next == 0xFF;
        if (another) {
          in.u8();
          break;
        }
        parameters.push_back(readParameter(in));
      }
      call(name, parameters, another ? done_status::kMore : done_status::kFinal);
      if (!another) return;
    }
  }

  void call(const std::string& name, std::vector<Parameter>& parameters, unsigned status) {
    const auto argumentsFrom = [&](std::size_t first) {
      return std::vector<Parameter>(parameters.begin() + static_cast<std::ptrdiff_t>(first), parameters.end());
    };
    bool done = true;
    std::optional<int> handle;
    if (name == "sp_executesql" || name == "#10") {
      const std::string text = parameters.at(0).value.toText();
      done = runWith(text, parameters.size() > 2 ? argumentsFrom(2) : std::vector<Parameter>());
    } else if (name == "sp_prepexec" || name == "#13") {
      const std::string text = parameters.at(2).value.toText();
      prepared_[++lastHandle_] = text;
      handle = lastHandle_;
      done = runWith(text, argumentsFrom(3));
    } else if (name == "sp_execute" || name == "#12") {
      done = runWith(prepared_.at(std::stoi(parameters.at(0).literal)), argumentsFrom(1));
    } else if (name == "sp_unprepare" || name == "#15") {
      prepared_.erase(std::stoi(parameters.at(0).literal));
    } else if (name.ends_with("sp_pkeys")) {
      primaryKeys(parameters.at(0).value.toText());
    } else {
      throw std::runtime_error("the procedure " + name + " is unknown");
    }
    writeReturnStatus(out_);
    if (handle) writeHandle(out_, *handle);
    writeDone(out_, Done::kProcedure, status | (done ? 0U : done_status::kError));
  }

  bool runWith(const std::string& text, const std::vector<Parameter>& parameters) {
    return runStatement(withParameters(text, parameters), Done::kInProcedure, done_status::kMore);
  }

  void primaryKeys(const std::string& table) {
    std::vector<FieldInfo> fields;
    for (const char* name : {"TABLE_QUALIFIER", "TABLE_OWNER", "TABLE_NAME", "COLUMN_NAME"}) {
      fields.push_back({name, FieldType::kVarChar, 128});
    }
    fields.push_back({"KEY_SEQ", FieldType::kInteger, 0});
    fields.push_back({"PK_NAME", FieldType::kVarChar, 128});
    writeColumns(out_, fields);
    std::uint64_t count = 0;
    const embedded::TableDef* found = store_->catalogue()->find(table);
    for (const embedded::IndexDef& index : found ? found->indexes : std::vector<embedded::IndexDef>()) {
      if (!index.primary) continue;
      for (const std::string& column : index.columns) {
        writeRow(
            out_, fields,
            {Value("db"), Value("dbo"), Value(table), Value(column), Value(static_cast<int>(++count)), Value("pk")});
      }
    }
    writeDone(out_, Done::kInProcedure, done_status::kCount | done_status::kMore, count);
  }

  /// False when it failed.
  bool runStatement(const std::string& sql, Done token, unsigned status) {
    ServerError error;
    const ServerPlan::Fate fate = server_.plan().next(sql, error);
    if (fate == ServerPlan::Fate::kDrop) throw Gone();
    if (fate == ServerPlan::Fate::kStall) {
      pollfd waiting{.fd = socket_, .events = POLLIN, .revents = 0};
      poll(&waiting, 1, kMostStall);
      return true;
    }
    if (fate == ServerPlan::Fate::kRun) {
      try {
        answer(withoutNationalMarks(sql), token, status);
        return true;
      } catch (const ProviderError& failure) {
        error = serverError(failure);
      }
    }
    writeMessage(out_, error, 16);
    writeMessage(out_, {3621, "The statement has been terminated."}, 10);
    writeDone(out_, token, status | done_status::kError);
    return false;
  }

  void answer(const std::string& sql, Done token, unsigned status) {
    const std::string word = toLower(trimSpace(sql).substr(0, 4));
    if (word == "set " || word == "use ") return writeDone(out_, token, status);
    if (word != "sele") {
      const std::int64_t rows = engine_->execute(sql);
      return writeDone(out_, token, status | done_status::kCount, static_cast<std::uint64_t>(rows));
    }
    const auto rows = engine_->open(sql, CursorKind::kForwardOnly, LockKind::kReadOnly);
    const std::vector<FieldInfo> fields = rows->fields();
    writeColumns(out_, fields);
    std::uint64_t count = 0;
    std::vector<Value> row(fields.size());
    for (; !rows->eof(); rows->moveNext()) {
      for (std::size_t i = 0; i < fields.size(); ++i) row[i] = rows->get(fields[i].name);
      writeRow(out_, fields, row);
      ++count;
      if (out_.bytes().size() < kMostInPacket) continue;
      send(false);
      if (isInterrupted()) break;
    }
    writeDone(out_, token, status | done_status::kCount, count);
  }

  Server& server_;
  int socket_;
  Writer out_;
  embedded::SqliteStore* store_ = nullptr;
  std::unique_ptr<embedded::Session> engine_;
  std::map<int, std::string> prepared_;
  int lastHandle_ = 0;
};

}  // namespace

void serve(Server& server, int socket) {
  try {
    Conversation(server, socket).run();
  } catch (const Gone&) {
  } catch (const std::exception& error) {
    std::fprintf(stderr, "test server: %s\n", error.what());
  }
}

}  // namespace orva::tds
