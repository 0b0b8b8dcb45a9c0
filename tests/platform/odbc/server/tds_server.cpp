#include "platform/odbc/server/tds_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "platform/odbc/server/tds_session.h"

namespace orva::tds {
namespace {

/// A client that says or takes nothing for so long has hung.
constexpr timeval kMostSilence{.tv_sec = 120, .tv_usec = 0};

}  // namespace

void ServerPlan::add(Fault fault) {
  const std::scoped_lock lock(mutex_);
  faults_.push_back(std::move(fault));
}

std::vector<std::string> ServerPlan::statements() const {
  const std::scoped_lock lock(mutex_);
  return statements_;
}

void ServerPlan::forget() {
  const std::scoped_lock lock(mutex_);
  statements_.clear();
}

ServerPlan::Fate ServerPlan::next(const std::string& statement, ServerError& error) {
  const std::scoped_lock lock(mutex_);
  statements_.push_back(statement);
  Fate fate = Fate::kRun;
  for (Fault& fault : faults_) {
    if (!statement.starts_with(fault.beginning) || --fault.left != 0) continue;
    fate = fault.fate;
    error = fault.error;
  }
  return fate;
}

Server::Server(std::string folder, std::string user, std::string password, Manner manner)
    : folder_(std::move(folder)), user_(std::move(user)), password_(std::move(password)) {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* const general = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, general, length) != 0 || listen(listener_, 16) != 0 ||
      getsockname(listener_, general, &length) != 0) {
    throw std::runtime_error("no port for the test server");
  }
  port_ = ntohs(address.sin_port);
  if (manner == Manner::kOrdinary) acceptor_ = std::thread([this] { accept(); });
}

Server::~Server() {
  shutdown(listener_, SHUT_RDWR);
  if (acceptor_.joinable()) acceptor_.join();
  close(listener_);
  {
    const std::scoped_lock lock(mutex_);
    for (const int socket : sockets_) shutdown(socket, SHUT_RDWR);
  }
  for (std::thread& session : sessions_) session.join();
  for (const int socket : sockets_) close(socket);
}

void Server::accept() {
  for (;;) {
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    const int now = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &kMostSilence, sizeof kMostSilence);
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &kMostSilence, sizeof kMostSilence);
    const std::scoped_lock lock(mutex_);
    sockets_.push_back(socket);
    sessions_.emplace_back([this, socket] {
      serve(*this, socket);
      shutdown(socket, SHUT_RDWR);
    });
  }
}

}  // namespace orva::tds
