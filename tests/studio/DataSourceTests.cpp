// Lines from a pipe and from the network: how bytes are cut, that none is lost, and that a flood
// takes no more room than there is.
#include "tools/studio/model/DataSource.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

using studio::CDataSource;
using studio::CLineCutter;
using studio::CLineQueue;
using studio::SourceLine;

namespace {

std::string Joined(const std::vector<SourceLine>& lines)
{
    std::string text;
    for (const SourceLine& line : lines)
        text += (line.fault.empty() ? line.text : "!" + line.fault) + "|";
    return text;
}

// Whether something becomes true in a time that a busy machine may take.
template <class Test>
bool Comes(Test test)
{
    constexpr int TRIES = 500;
    for (int n = 0; n < TRIES; ++n) {
        if (test()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
}

struct Pipe {
    HANDLE hRead = nullptr;
    HANDLE hWrite = nullptr;

    Pipe() { ::CreatePipe(&hRead, &hWrite, nullptr, 0); }
    void Write(const std::string& bytes) const
    {
        DWORD nWritten = 0;
        ::WriteFile(hWrite, bytes.data(), static_cast<DWORD>(bytes.size()), &nWritten, nullptr);
        EXPECT_EQ(bytes.size(), nWritten);
    }
    void End() { ::CloseHandle(std::exchange(hWrite, nullptr)); }
};

SOCKET Connect(unsigned nPort)
{
    const SOCKET hSocket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = ::htons(static_cast<u_short>(nPort));
    place.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    EXPECT_EQ(0, ::connect(hSocket, reinterpret_cast<const sockaddr*>(&place), sizeof place));
    return hSocket;
}

void Send(SOCKET hSocket, const std::string& bytes)
{
    EXPECT_EQ(static_cast<int>(bytes.size()),
              ::send(hSocket, bytes.data(), static_cast<int>(bytes.size()), 0));
}

} // namespace

TEST(LineCutter, CutsLinesHoweverTheBytesCome)
{
    const std::string bytes = "a=1\nb=2\r\n\nc=3";
    for (std::size_t nCut = 0; nCut <= bytes.size(); ++nCut) {
        CLineQueue queue;
        CLineCutter cutter;
        EXPECT_EQ(1, cutter.Add(bytes.data(), nCut, &queue));
        EXPECT_EQ(1, cutter.Add(bytes.data() + nCut, bytes.size() - nCut, &queue));
        EXPECT_EQ(1, cutter.Finish(&queue));
        EXPECT_EQ("a=1|b=2\r||c=3|", Joined(queue.Take())) << nCut;
    }
}

TEST(LineCutter, TellsALineThatIsTooLongOnceAndGoesOn)
{
    CLineQueue queue;
    CLineCutter cutter;
    const std::string most(CLineCutter::LONGEST, 'x');
    const std::string bytes = most + "\n" + most + "x" + "\n" + "b=2\n" + most + most + most;
    for (const char c : bytes) EXPECT_EQ(1, cutter.Add(&c, 1, &queue));
    EXPECT_EQ(1, cutter.Finish(&queue));
    const std::string fault = "!a line is longer than 4096 bytes|";
    EXPECT_EQ(most + "|" + fault + "b=2|" + fault, Joined(queue.Take()));
}

TEST(LineQueue, NeverHoldsMoreThanItsRoomAndLosesNone)
{
    constexpr int SENT = 3 * static_cast<int>(CLineQueue::ROOM) + 17;
    CLineQueue queue;
    std::thread flood([&queue] {
        for (int n = 0; n < SENT; ++n) queue.Push({std::to_string(n)});
    });
    int nNext = 0;
    std::size_t nMost = 0;
    while (nNext < SENT) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const std::vector<SourceLine> lines = queue.Take();
        nMost = std::max(nMost, lines.size());
        for (const SourceLine& line : lines) ASSERT_EQ(std::to_string(nNext++), line.text);
    }
    flood.join();
    EXPECT_LE(nMost, CLineQueue::ROOM);
}

TEST(LineQueue, LetsNobodyWaitWhenItIsClosed)
{
    CLineQueue queue;
    for (std::size_t n = 0; n < CLineQueue::ROOM; ++n) ASSERT_EQ(1, queue.Push({"x"}));
    int nPushed = -1;
    std::thread waits([&] { nPushed = queue.Push({"one too many"}); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(-1, nPushed) << "it waits for room";
    queue.Close();
    waits.join();
    EXPECT_EQ(0, nPushed);
    EXPECT_EQ(CLineQueue::ROOM, queue.Take().size());
}

TEST(DataSource, ReadsAnInputToItsEnd)
{
    Pipe pipe;
    CDataSource source;
    ASSERT_EQ(1, source.Read(pipe.hRead));
    pipe.Write("a=1\nb=");
    std::string text;
    EXPECT_TRUE(Comes([&] { return (text += Joined(source.Take())) == "a=1|"; })) << text;
    EXPECT_FALSE(source.HasEnded());
    pipe.Write("2\nlast");
    pipe.End();
    EXPECT_TRUE(Comes([&] { return source.HasEnded(); }));
    text += Joined(source.Take());
    EXPECT_EQ("a=1|b=2|last|", text);
    ::CloseHandle(pipe.hRead);
}

TEST(DataSource, MayEndBeforeItsInput)
{
    Pipe pipe;
    {
        CDataSource source;
        ASSERT_EQ(1, source.Read(pipe.hRead));
    }
    pipe.Write("a=1\n"); // the thread that reads it is alive, and finds the queue closed
    pipe.End();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

TEST(DataSource, HearsSeveralGuestsAtOnce)
{
    CDataSource source;
    std::string why;
    ASSERT_EQ(1, source.Listen("", 0, &why)) << why;
    ASSERT_NE(0U, source.Port());
    const SOCKET hFirst = Connect(source.Port());
    const SOCKET hSecond = Connect(source.Port());
    Send(hFirst, "a=");
    Send(hSecond, "b=2\n");
    std::string text;
    EXPECT_TRUE(Comes([&] { return (text += Joined(source.Take())) == "b=2|"; })) << text;
    Send(hFirst, "1\nlast");
    ::closesocket(hFirst);
    EXPECT_TRUE(Comes([&] { return (text += Joined(source.Take())) == "b=2|a=1|last|"; })) << text;
    Send(hSecond, "c=3\n");
    EXPECT_TRUE(Comes([&] { return (text += Joined(source.Take())) == "b=2|a=1|last|c=3|"; }))
        << "who stays is heard on";
    ::closesocket(hSecond);
}

TEST(DataSource, HoldsAFloodFromTheNetworkWithinItsRoom)
{
    constexpr int SENT = 20000;
    CDataSource source;
    std::string why;
    ASSERT_EQ(1, source.Listen("", 0, &why)) << why;
    const unsigned nPort = source.Port();
    std::thread flood([nPort] {
        std::string bytes;
        for (int n = 0; n < SENT; ++n) bytes += "a=" + std::to_string(n) + "\n";
        const SOCKET hSocket = Connect(nPort);
        Send(hSocket, bytes);
        ::closesocket(hSocket);
    });
    std::string last;
    std::size_t nMost = 0;
    int nGot = 0;
    EXPECT_TRUE(Comes([&] {
        const std::vector<SourceLine> lines = source.Take();
        nMost = std::max(nMost, lines.size());
        nGot += static_cast<int>(lines.size());
        if (!lines.empty()) last = lines.back().text;
        return nGot == SENT;
    }));
    flood.join();
    EXPECT_EQ("a=19999", last);
    EXPECT_LE(nMost, CLineQueue::ROOM);
}

TEST(DataSource, TellsWhyItDoesNotListen)
{
    CDataSource first;
    CDataSource second;
    std::string why;
    ASSERT_EQ(1, first.Listen("", 0, &why)) << why;
    EXPECT_EQ(0, second.Listen("", first.Port(), &why));
    EXPECT_EQ("cannot listen at 127.0.0.1:" + std::to_string(first.Port()) +
                  ": another program does, or it is not allowed",
              why);
    EXPECT_EQ(0, second.Listen("here", 8000, &why));
    EXPECT_EQ("'here:8000' is no address with a port", why);
    EXPECT_EQ(0, second.Listen("", 65536, &why));
    EXPECT_EQ("'127.0.0.1:65536' is no address with a port", why);
    EXPECT_EQ(0U, second.Port());
}
