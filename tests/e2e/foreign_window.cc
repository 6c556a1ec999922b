// A window of another program, for runs that are started by one: it prints its number, then each
// client message that reaches it, and obeys one word a line on standard input:
//
//   hide          takes the window off the screen
//   shown         prints whether it is on the screen
//   owner WINDOW  prints the number of the window that WINDOW is transient for, 0 for none
//
// It ends with the end of its input.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace {

struct Free {
  void operator()(void* answer) const { std::free(answer); }
};
template <class Answer>
using Owned = std::unique_ptr<Answer, Free>;

class ForeignWindow {
 public:
  ForeignWindow() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) std::exit(1);
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 120, 80, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    xcb_map_window(connection_, window_);
    Say(std::to_string(window_));
  }
  ~ForeignWindow() { xcb_disconnect(connection_); }
  ForeignWindow(const ForeignWindow&) = delete;
  ForeignWindow& operator=(const ForeignWindow&) = delete;

  void Run() {
    std::array<pollfd, 2> sources = {
        {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(connection_), POLLIN, 0}}};
    while (true) {
      PrintMessages();
      ::poll(sources.data(), sources.size(), -1);
      if (sources[0].revents == 0) continue;
      std::string line;
      if (!std::getline(std::cin, line)) return;
      Obey(line);
    }
  }

 private:
  void Say(const std::string& line) {
    xcb_flush(connection_);
    std::cout << line << std::endl;
  }

  std::string NameOf(xcb_atom_t atom) {
    const Owned<xcb_get_atom_name_reply_t> name(
        xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
    if (name == nullptr) return "?";
    return {xcb_get_atom_name_name(name.get()),
            static_cast<size_t>(xcb_get_atom_name_name_length(name.get()))};
  }

  void PrintMessages() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
      const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
      std::ostringstream line;
      line << "message " << NameOf(message->type) << ' ' << int{message->format};
      for (int i = 0; i < 3; ++i) line << ' ' << static_cast<int32_t>(message->data.data32[i]);
      Say(line.str());
    }
  }

  bool IsShown() {
    const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window_), nullptr));
    return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
  }

  uint32_t OwnerOf(xcb_window_t window) {
    const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (property == nullptr || xcb_get_property_value_length(property.get()) != 4) return 0;
    return *static_cast<const uint32_t*>(xcb_get_property_value(property.get()));
  }

  void Obey(const std::string& line) {
    std::istringstream words(line);
    std::string word;
    uint32_t window = 0;
    words >> word >> window;
    if (word == "hide") {
      xcb_unmap_window(connection_, window_);
      Say("hidden");
    } else if (word == "shown") {
      Say(IsShown() ? "shown yes" : "shown no");
    } else if (word == "owner") {
      Say("owner " + std::to_string(OwnerOf(window)));
    }
  }

  xcb_connection_t* connection_;
  xcb_window_t window_ = 0;
};

}  // namespace

int main() {
  ForeignWindow().Run();
  return 0;
}
