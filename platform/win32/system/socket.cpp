#include "platform/controls/socket.h"

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"

#include <winsock2.h>

namespace bromvale {
namespace {

constexpr const char* kWindowClass = "BromvaleNameLookUp";
constexpr UINT kNameFound = WM_APP;

// The old library, which every system has; loaded at the first use.
struct Library {
    int(WSAAPI* start)(WORD, LPWSADATA) = nullptr;
    SOCKET(WSAAPI* socket)(int, int, int) = nullptr;
    int(WSAAPI* closesocket)(SOCKET) = nullptr;
    int(WSAAPI* connect)(SOCKET, const sockaddr*, int) = nullptr;
    int(WSAAPI* ioctlsocket)(SOCKET, long, u_long*) = nullptr;
    int(WSAAPI* select)(int, fd_set*, fd_set*, fd_set*, const timeval*) = nullptr;
    int(WSAAPI* send)(SOCKET, const char*, int, int) = nullptr;
    int(WSAAPI* recv)(SOCKET, char*, int, int) = nullptr;
    int(WSAAPI* lastError)() = nullptr;
    unsigned long(WSAAPI* inet_addr)(const char*) = nullptr;
    HANDLE(WSAAPI* findHost)(HWND, UINT, const char*, char*, int) = nullptr;
    int(WSAAPI* cancelSearch)(HANDLE) = nullptr;
    bool usable = false;
};

Library loadLibrary() {
    Library wsock;
    const HMODULE module = loadSystemLibrary("wsock32.dll");
    WSADATA data{};
    wsock.usable =
        loadEntry(module, "WSAStartup", wsock.start) && loadEntry(module, "socket", wsock.socket) &&
        loadEntry(module, "closesocket", wsock.closesocket) && loadEntry(module, "connect", wsock.connect) &&
        loadEntry(module, "ioctlsocket", wsock.ioctlsocket) && loadEntry(module, "select", wsock.select) &&
        loadEntry(module, "send", wsock.send) && loadEntry(module, "recv", wsock.recv) &&
        loadEntry(module, "WSAGetLastError", wsock.lastError) &&
        loadEntry(module, "inet_addr", wsock.inet_addr) &&
        loadEntry(module, "WSAAsyncGetHostByName", wsock.findHost) &&
        loadEntry(module, "WSACancelAsyncRequest", wsock.cancelSearch) &&
        wsock.start(MAKEWORD(1, 1), &data) == 0;
    return wsock;
}

const Library& wsock() {
    static const Library library = loadLibrary();
    return library;
}

// One socket in the three sets of a select.
fd_set only(SOCKET socket) {
    fd_set set{};
    set.fd_count = 1;
    set.fd_array[0] = socket;
    return set;
}

class WindowsConnection : public Connection {
  public:
    WindowsConnection(const std::string& host, int port);
    ~WindowsConnection() override;
    SocketState state() override;
    bool send(std::string_view bytes) override;

  private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void lookUp(const std::string& host);
    void found(bool success);
    void connectTo(unsigned long address);
    void look();

    int port_;
    SOCKET socket_ = INVALID_SOCKET;
    SocketState state_ = kSocketError;
    HWND window_ = nullptr;  // takes the message that a name was found
    HANDLE search_ = nullptr;
    char host_[MAXGETHOSTSTRUCT] = {};
};

WindowsConnection::WindowsConnection(const std::string& host, int port) : port_(port) {
    if (!wsock().usable) return;
    const unsigned long address = wsock().inet_addr(host.c_str());
    if (address != INADDR_NONE) {
        connectTo(address);
    } else {
        lookUp(host);
    }
}

WindowsConnection::~WindowsConnection() {
    if (search_ != nullptr) wsock().cancelSearch(search_);
    if (window_ != nullptr) DestroyWindow(window_);
    if (socket_ != INVALID_SOCKET) wsock().closesocket(socket_);
}

LRESULT CALLBACK WindowsConnection::windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<WindowsConnection*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message != kNameFound || self == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    self->found(WSAGETASYNCERROR(lParam) == 0);
    return 0;
}

void WindowsConnection::lookUp(const std::string& host) {
    WNDCLASSA shape{};
    shape.lpfnWndProc = windowProcedure;
    shape.hInstance = GetModuleHandleA(nullptr);
    shape.lpszClassName = kWindowClass;
    RegisterClassA(&shape);  // fails from the second time on, since it is there
    window_ = CreateWindowExA(0, kWindowClass, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, shape.hInstance,
                              nullptr);
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    search_ = wsock().findHost(window_, kNameFound, host.c_str(), host_, sizeof host_);
    if (search_ != nullptr) state_ = kSocketConnecting;
}

void WindowsConnection::found(bool success) {
    search_ = nullptr;
    state_ = kSocketError;
    const auto* entry = reinterpret_cast<const hostent*>(host_);
    if (!success || entry->h_length != sizeof(unsigned long) || entry->h_addr_list[0] == nullptr) return;
    connectTo(*reinterpret_cast<const unsigned long*>(entry->h_addr_list[0]));
}

void WindowsConnection::connectTo(unsigned long address) {
    socket_ = wsock().socket(AF_INET, SOCK_STREAM, 0);
    if (socket_ == INVALID_SOCKET) return;
    u_long withoutWaiting = 1;
    wsock().ioctlsocket(socket_, static_cast<long>(FIONBIO), &withoutWaiting);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    // The network's order of bytes, by hand: no reason to load one more function.
    place.sin_port = static_cast<u_short>((port_ >> 8) | ((port_ & 0xFF) << 8));
    place.sin_addr.s_addr = address;
    const int result = wsock().connect(socket_, reinterpret_cast<const sockaddr*>(&place), sizeof place);
    if (result == 0) state_ = kSocketConnected;
    if (result != 0 && wsock().lastError() == WSAEWOULDBLOCK) state_ = kSocketConnecting;
}

void WindowsConnection::look() {
    fd_set writable = only(socket_);
    fd_set broken = only(socket_);
    const timeval atOnce{};
    if (wsock().select(0, nullptr, &writable, &broken, &atOnce) <= 0) return;
    state_ = broken.fd_count > 0 ? kSocketError : kSocketConnected;
}

SocketState WindowsConnection::state() {
    if (state_ == kSocketConnecting && socket_ != INVALID_SOCKET) look();
    if (state_ == kSocketConnected) {
        char byte = 0;
        const int got = wsock().recv(socket_, &byte, 1, MSG_PEEK);
        if (got == 0) state_ = kSocketClosing;
        if (got < 0 && wsock().lastError() != WSAEWOULDBLOCK) state_ = kSocketError;
    }
    return state_;
}

bool WindowsConnection::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const int sent = wsock().send(socket_, bytes.data(), static_cast<int>(bytes.size()), 0);
        if (sent >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
            continue;
        }
        fd_set writable = only(socket_);
        const timeval aWhile{5, 0};
        if (wsock().lastError() != WSAEWOULDBLOCK ||
            wsock().select(0, nullptr, &writable, nullptr, &aWhile) <= 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::unique_ptr<Connection> openConnection(const std::string& host, int port) {
    return std::make_unique<WindowsConnection>(host, port);
}

}  // namespace bromvale
