#include "desktop/controls/caller_window.h"

#include <QGuiApplication>
#include <QWindow>

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#endif

namespace carnetel::desktop {

#if QT_CONFIG(xcb)

namespace {

// Answers of the server are the caller's to free.
struct Free {
  void operator()(void* answer) const { std::free(answer); }
};
template <class Answer>
using Owned = std::unique_ptr<Answer, Free>;

// Null where the program is not on X11.
xcb_connection_t* Connection() {
  const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 == nullptr ? nullptr : x11->connection();
}

// Asking for each answer keeps an error from the toolkit, which would complain of a window that
// has gone meanwhile.
bool IsWindow(xcb_connection_t* connection, xcb_window_t window) {
  xcb_generic_error_t* error = nullptr;
  const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
      connection, xcb_get_window_attributes(connection, window), &error));
  const Owned<xcb_generic_error_t> owned_error(error);
  return attributes != nullptr;
}

void Settle(xcb_connection_t* connection, xcb_void_cookie_t request) {
  const Owned<xcb_generic_error_t> ignored(xcb_request_check(connection, request));
}

xcb_atom_t MessageType(xcb_connection_t* connection) {
  constexpr std::string_view kName = "CARNETEL_NOTIFY";
  xcb_generic_error_t* error = nullptr;
  const auto request = xcb_intern_atom(connection, 0, kName.size(), kName.data());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, request, &error));
  const Owned<xcb_generic_error_t> owned_error(error);
  return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
}

}  // namespace

void CallerWindow::Own(QWidget& window) const {
  xcb_connection_t* connection = window_ == 0 ? nullptr : Connection();
  if (connection == nullptr || !IsWindow(connection, window_)) return;
  QWindow* owner = QWindow::fromWinId(window_);
  if (owner == nullptr) return;
  // The toolkit tells X11 of an owner for dialogs only.
  window.setWindowFlags(window.windowFlags() | Qt::Dialog);
  window.winId();
  window.windowHandle()->setTransientParent(owner);
  // It only stands for the other program's window, which stays when it goes.
  QObject::connect(&window, &QObject::destroyed, owner, &QObject::deleteLater);
}

void CallerWindow::ShowAgain() const {
  xcb_connection_t* connection = window_ == 0 ? nullptr : Connection();
  if (connection == nullptr) return;
  Settle(connection, xcb_map_window_checked(connection, window_));
}

void CallerWindow::Send(int message, int32_t w_param, int32_t l_param) const {
  xcb_connection_t* connection = window_ == 0 ? nullptr : Connection();
  if (connection == nullptr) return;
  xcb_client_message_event_t event = {};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window_;
  event.type = MessageType(connection);
  event.data.data32[0] = static_cast<uint32_t>(message);
  event.data.data32[1] = static_cast<uint32_t>(w_param);
  event.data.data32[2] = static_cast<uint32_t>(l_param);
  // Without a mask it goes to the program that made the window, and to nobody else.
  Settle(connection, xcb_send_event_checked(connection, 0, window_, XCB_EVENT_MASK_NO_EVENT,
                                            reinterpret_cast<const char*>(&event)));
}

#else

void CallerWindow::Own(QWidget& /*window*/) const {}
void CallerWindow::ShowAgain() const {}
void CallerWindow::Send(int /*message*/, int32_t /*w_param*/, int32_t /*l_param*/) const {}

#endif

}  // namespace carnetel::desktop
