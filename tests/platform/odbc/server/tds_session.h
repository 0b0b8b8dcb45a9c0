#pragma once

namespace orva::tds {

class Server;

/// Serves one connection until it ends.
void serve(Server& server, int socket);

}  // namespace orva::tds
