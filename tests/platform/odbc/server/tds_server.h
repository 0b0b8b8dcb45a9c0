#pragma once

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/odbc/server/tds_tokens.h"

namespace orva::tds {

/// What a test wants from its server, and what it may ask it.
class ServerPlan {
 public:
  enum class Fate { kRun, kFail, kDrop, kStall };

  /// The `nth` statement from now that begins like this (1 is the next one) is answered with
  /// this error.
  void failAt(int nth, ServerError error, std::string beginning = {}) {
    add({Fate::kFail, nth, std::move(error), std::move(beginning)});
  }
  /// At the `nth` such statement the connection is dropped without an answer.
  void dropAt(int nth, std::string beginning = {}) { add({Fate::kDrop, nth, {}, std::move(beginning)}); }
  /// The `nth` such statement is not answered before the client gives it up.
  void stallAt(int nth, std::string beginning = {}) { add({Fate::kStall, nth, {}, std::move(beginning)}); }
  /// The statements that came since the last `forget`, with the values of their parameters.
  std::vector<std::string> statements() const;
  void forget();

  // For the server.
  Fate next(const std::string& statement, ServerError& error);

 private:
  struct Fault {
    Fate fate;
    int left;
    ServerError error;
    std::string beginning;
  };

  void add(Fault fault);

  mutable std::mutex mutex_;
  std::vector<std::string> statements_;
  std::vector<Fault> faults_;
};

/// A server that speaks the wire protocol of version 7.4 on the loopback interface, in front
/// of the embedded engine: catalog C is the file C.mdb of a folder. One login is let in.
class Server {
 public:
  /// A silent server takes connections and says nothing.
  enum class Manner { kOrdinary, kSilent };

  Server(std::string folder, std::string user, std::string password, Manner manner = Manner::kOrdinary);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  int port() const { return port_; }
  ServerPlan& plan() { return plan_; }
  const std::string& folder() const { return folder_; }
  const std::string& user() const { return user_; }
  const std::string& password() const { return password_; }

 private:
  void accept();

  std::string folder_;
  std::string user_;
  std::string password_;
  ServerPlan plan_;
  int listener_ = -1;
  int port_ = 0;
  std::mutex mutex_;
  std::vector<int> sockets_;
  std::vector<std::thread> sessions_;
  std::thread acceptor_;
};

}  // namespace orva::tds
