// A session manager for one program at a time: it prints the address for SESSION_MANAGER, then
// "registered" for a program that logs in, and obeys one word a line on standard input:
//
//   shutdown  asks the program to save its data for the end of the session, and prints whether it
//             "refused" or "agreed"
//
// It ends with the end of its input.
#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

// What the library's callbacks share; they get it as their client data.
struct Session {
  SmsConn client = nullptr;
  bool refused = false;
  bool ending = false;
};

void Say(const std::string& line) {
  std::cout << line << std::endl;
}

Status Register(SmsConn client, SmPointer data, char* previous) {
  auto& session = *static_cast<Session*>(data);
  // An id that no manager of this kind has given cannot be known.
  if (previous != nullptr) return 0;
  SmsRegisterClientReply(client, SmsGenerateClientID(client));
  // Every program that is new to the session saves itself once.
  SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
  session.client = client;
  Say("registered");
  return 1;
}

void Interact(SmsConn client, SmPointer /*data*/, int /*type*/) {
  SmsInteract(client);
}

void InteractDone(SmsConn client, SmPointer data, Bool cancel) {
  static_cast<Session*>(data)->refused = cancel != False;
  if (cancel != False) SmsShutdownCancelled(client);
}

void SaveDone(SmsConn client, SmPointer data, Bool /*success*/) {
  auto& session = *static_cast<Session*>(data);
  if (!session.ending) {
    SmsSaveComplete(client);
    return;
  }
  session.ending = false;
  Say(session.refused ? "refused" : "agreed");
}

void Close(SmsConn client, SmPointer data, int count, char** reasons) {
  auto& session = *static_cast<Session*>(data);
  SmFreeReasons(count, reasons);
  IceConn connection = SmsGetIceConnection(client);
  SmsCleanUp(client);
  IceCloseConnection(connection);
  session.client = nullptr;
}

Status NewClient(SmsConn /*client*/, SmPointer data, unsigned long* mask, SmsCallbacks* callbacks,
                 char** /*failure*/) {
  *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
          SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
          SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
          SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
  callbacks->register_client = {Register, data};
  callbacks->interact_request = {Interact, data};
  callbacks->interact_done = {InteractDone, data};
  callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, data};
  callbacks->save_yourself_phase2_request = {
      [](SmsConn client, SmPointer) { SmsSaveYourselfPhase2(client); }, data};
  callbacks->save_yourself_done = {SaveDone, data};
  callbacks->close_connection = {Close, data};
  callbacks->set_properties = {[](SmsConn, SmPointer, int count, SmProp** properties) {
                                 for (int i = 0; i < count; ++i) SmFreeProperty(properties[i]);
                               },
                               data};
  callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, data};
  callbacks->get_properties = {
      [](SmsConn client, SmPointer) { SmsReturnProperties(client, 0, nullptr); }, data};
  return 1;
}

class SessionManager {
 public:
  SessionManager() {
    std::array<char, 256> error;
    const int room = static_cast<int>(error.size());
    IceSetIOErrorHandler([](IceConn) {});
    if (!SmsInitialize(
            "test", "1", NewClient, &session_, [](char*) -> Bool { return True; }, room,
            error.data()) ||
        !IceListenForConnections(&listener_count_, &listeners_, room, error.data())) {
      std::cerr << error.data() << '\n';
      std::exit(1);
    }
    for (int i = 0; i < listener_count_; ++i) {
      IceSetHostBasedAuthProc(listeners_[i], [](char*) -> Bool { return True; });
    }
    Say(IceComposeNetworkIdList(listener_count_, listeners_));
  }

  ~SessionManager() { IceFreeListenObjs(listener_count_, listeners_); }
  SessionManager(const SessionManager&) = delete;
  SessionManager& operator=(const SessionManager&) = delete;

  void Run() {
    while (true) {
      std::vector<pollfd> sources = {{STDIN_FILENO, POLLIN, 0}};
      for (int i = 0; i < listener_count_; ++i) {
        sources.push_back({IceGetListenConnectionNumber(listeners_[i]), POLLIN, 0});
      }
      for (IceConn connection : connections_) {
        sources.push_back({IceConnectionNumber(connection), POLLIN, 0});
      }
      ::poll(sources.data(), sources.size(), -1);
      for (int i = 0; i < listener_count_; ++i) {
        if (sources[static_cast<size_t>(i) + 1].revents != 0) Accept(listeners_[i]);
      }
      ReadConnections(sources);
      std::string line;
      if (sources[0].revents == 0) continue;
      if (!std::getline(std::cin, line)) return;
      if (line == "shutdown") AskToEnd();
    }
  }

 private:
  void Accept(IceListenObj listener) {
    IceAcceptStatus status = IceAcceptSuccess;
    IceConn connection = IceAcceptConnection(listener, &status);
    if (connection == nullptr) return;
    while (IceConnectionStatus(connection) == IceConnectPending) {
      IceProcessMessages(connection, nullptr, nullptr);
    }
    if (IceConnectionStatus(connection) == IceConnectAccepted) connections_.push_back(connection);
  }

  void ReadConnections(const std::vector<pollfd>& sources) {
    const size_t first = 1 + static_cast<size_t>(listener_count_);
    std::vector<IceConn> open;
    for (size_t i = 0; i < connections_.size(); ++i) {
      const bool readable = first + i < sources.size() && sources[first + i].revents != 0 &&
                            sources[first + i].fd == IceConnectionNumber(connections_[i]);
      if (!readable) {
        open.push_back(connections_[i]);
        continue;
      }
      const IceProcessMessagesStatus status = IceProcessMessages(connections_[i], nullptr, nullptr);
      if (status == IceProcessMessagesSuccess) open.push_back(connections_[i]);
      if (status == IceProcessMessagesIOError) IceCloseConnection(connections_[i]);
    }
    connections_ = open;
  }

  void AskToEnd() {
    if (session_.client == nullptr) {
      Say("nobody");
      return;
    }
    session_.refused = false;
    session_.ending = true;
    SmsSaveYourself(session_.client, SmSaveBoth, True, SmInteractStyleAny, False);
  }

  Session session_;
  int listener_count_ = 0;
  IceListenObj* listeners_ = nullptr;
  std::vector<IceConn> connections_;
};

}  // namespace

int main() {
  SessionManager().Run();
  return 0;
}
