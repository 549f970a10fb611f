// Live data from outside; see the header.
#include "tools/studio/model/DataSource.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <atomic>
#include <exception>
#include <list>
#include <utility>

namespace studio {

struct CDataSource::Ended {
    std::atomic<bool> bEnded{false};
};

namespace {

constexpr DWORD PIECE = 16384; // bytes that are read at once
constexpr std::size_t MOST_GUESTS = 32;
constexpr long LOOK_MICROSECONDS = 100000; // between two looks whether to end

class CSocket {
public:
    explicit CSocket(SOCKET hSocket = INVALID_SOCKET) : m_hSocket(hSocket) {}
    ~CSocket()
    {
        if (m_hSocket != INVALID_SOCKET) ::closesocket(m_hSocket);
    }
    CSocket(CSocket&& other) noexcept : m_hSocket(std::exchange(other.m_hSocket, INVALID_SOCKET)) {}
    CSocket& operator=(CSocket&&) = delete;
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    [[nodiscard]] SOCKET Get() const { return m_hSocket; }
    [[nodiscard]] bool IsOpen() const { return m_hSocket != INVALID_SOCKET; }

private:
    SOCKET m_hSocket;
};

// Who has connected.
struct Guest {
    CSocket socket;
    CLineCutter cutter{};
};

void ReadInput(HANDLE hInput, CLineQueue* pQueue)
{
    CLineCutter cutter;
    std::string piece(PIECE, '\0');
    DWORD nRead = 0;
    while (::ReadFile(hInput, piece.data(), PIECE, &nRead, nullptr) && nRead)
        if (!cutter.Add(piece.data(), nRead, pQueue)) return;
    cutter.Finish(pQueue);
}

class CListener {
public:
    CListener(CSocket socket, std::shared_ptr<CLineQueue> pQueue)
        : m_socket(std::move(socket)), m_pQueue(std::move(pQueue)), m_piece(PIECE, '\0')
    {
    }

    void Run()
    {
        while (!m_pQueue->IsClosed()) Look();
    }

private:
    void Look();
    void Accept();
    bool Hear(Guest* pGuest); // false: it has gone

    CSocket m_socket;
    std::shared_ptr<CLineQueue> m_pQueue;
    std::list<Guest> m_guests;
    std::string m_piece;
};

void CListener::Look()
{
    fd_set ready;
    FD_ZERO(&ready);
    if (m_guests.size() < MOST_GUESTS) FD_SET(m_socket.Get(), &ready);
    for (const Guest& guest : m_guests) FD_SET(guest.socket.Get(), &ready);
    timeval wait{0, LOOK_MICROSECONDS};
    if (::select(0, &ready, nullptr, nullptr, &wait) <= 0) return;
    m_guests.remove_if(
        [&](Guest& guest) { return FD_ISSET(guest.socket.Get(), &ready) && !Hear(&guest); });
    if (FD_ISSET(m_socket.Get(), &ready)) Accept();
}

void CListener::Accept()
{
    CSocket socket(::accept(m_socket.Get(), nullptr, nullptr));
    if (socket.IsOpen()) m_guests.push_back({std::move(socket)});
}

bool CListener::Hear(Guest* pGuest)
{
    const int nRead =
        ::recv(pGuest->socket.Get(), m_piece.data(), static_cast<int>(m_piece.size()), 0);
    if (nRead > 0)
        return pGuest->cutter.Add(m_piece.data(), static_cast<std::size_t>(nRead),
                                  m_pQueue.get()) != 0;
    pGuest->cutter.Finish(m_pQueue.get());
    return false;
}

std::string WhyNot(const std::string& host, unsigned nPort)
{
    const int nError = ::WSAGetLastError();
    const std::string place = host + ":" + std::to_string(nPort);
    if (nError == WSAEADDRINUSE || nError == WSAEACCES)
        return "cannot listen at " + place + ": another program does, or it is not allowed";
    return "cannot listen at " + place + " (system error " + std::to_string(nError) + ")";
}

bool Bind(const CSocket& socket, const in_addr& address, unsigned nPort)
{
    constexpr int QUEUED = 8;
    const BOOL bAlone = TRUE; // another program that takes the port later would get the guests
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr = address;
    place.sin_port = ::htons(static_cast<u_short>(nPort));
    return socket.IsOpen() &&
           !::setsockopt(socket.Get(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                         reinterpret_cast<const char*>(&bAlone), sizeof bAlone) &&
           !::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) &&
           !::listen(socket.Get(), QUEUED);
}

unsigned PortOf(const CSocket& socket)
{
    sockaddr_in place{};
    int nSize = sizeof place;
    if (::getsockname(socket.Get(), reinterpret_cast<sockaddr*>(&place), &nSize)) return 0;
    return ::ntohs(place.sin_port);
}

// Runs something on a thread of its own, whose failure ends nothing.
template <class Work>
int Start(std::thread* pThread, Work work)
{
    try {
        *pThread = std::thread([work = std::move(work)]() mutable {
            try {
                work();
            } catch (const std::exception&) { // without memory there are no more lines
            }
        });
        return 1;
    } catch (const std::exception&) {
        return 0;
    }
}

} // namespace

CDataSource::CDataSource()
    : m_pQueue(std::make_shared<CLineQueue>()), m_pEnded(std::make_shared<Ended>())
{
}

CDataSource::~CDataSource()
{
    m_pQueue->Close();
    if (m_listener.joinable()) m_listener.join();
    if (m_bNetwork) ::WSACleanup();
}

// A thread that waits for input cannot be woken, so it is left alone; what it uses is its own, too.
int CDataSource::Read(HANDLE hInput)
{
    std::thread reader;
    const auto work = [hInput, pQueue = m_pQueue, pEnded = m_pEnded] {
        ReadInput(hInput, pQueue.get());
        pEnded->bEnded = true;
    };
    if (!Start(&reader, work)) return 0;
    reader.detach();
    return 1;
}

bool CDataSource::HasEnded() const
{
    return m_pEnded->bEnded;
}

int CDataSource::Listen(const std::string& host, unsigned nPort, std::string* pWhy)
{
    constexpr unsigned LAST_PORT = 65535;
    const std::string place = host.empty() ? "127.0.0.1" : host;
    WSADATA data;
    in_addr address{};
    m_bNetwork = m_bNetwork || !::WSAStartup(MAKEWORD(2, 2), &data);
    if (nPort > LAST_PORT || ::inet_pton(AF_INET, place.c_str(), &address) != 1) {
        *pWhy = "'" + place + ":" + std::to_string(nPort) + "' is no address with a port";
        return 0;
    }
    CSocket socket(::socket(AF_INET, SOCK_STREAM, 0));
    if (!Bind(socket, address, nPort)) {
        *pWhy = WhyNot(place, nPort);
        return 0;
    }
    m_nPort = PortOf(socket);
    auto pListener = std::make_shared<CListener>(std::move(socket), m_pQueue);
    if (Start(&m_listener, [pListener] { pListener->Run(); })) return 1;
    m_nPort = 0;
    *pWhy = "no thread can be had to listen";
    return 0;
}

} // namespace studio
