// Lines between threads; see the header.
#include "tools/studio/model/LineQueue.h"

#include <algorithm>
#include <utility>

namespace studio {

int CLineQueue::Push(SourceLine line)
{
    std::unique_lock lock(m_lock);
    m_room.wait(lock, [this] { return m_bClosed || m_lines.size() < ROOM; });
    if (m_bClosed) return 0;
    m_lines.push_back(std::move(line));
    return 1;
}

std::vector<SourceLine> CLineQueue::Take()
{
    std::vector<SourceLine> lines;
    {
        const std::lock_guard lock(m_lock);
        lines.swap(m_lines);
    }
    m_room.notify_all();
    return lines;
}

void CLineQueue::Close()
{
    {
        const std::lock_guard lock(m_lock);
        m_bClosed = true;
    }
    m_room.notify_all();
}

bool CLineQueue::IsClosed() const
{
    const std::lock_guard lock(m_lock);
    return m_bClosed;
}

int CLineCutter::EndLine(CLineQueue* pQueue)
{
    SourceLine line;
    if (m_bTooLong)
        line.fault = "a line is longer than " + std::to_string(LONGEST) + " bytes";
    else
        line.text = m_line;
    m_line.clear();
    m_bTooLong = false;
    return pQueue->Push(std::move(line));
}

int CLineCutter::Add(const char* pBytes, std::size_t nBytes, CLineQueue* pQueue)
{
    const char* pEnd = pBytes + nBytes;
    while (pBytes != pEnd) {
        const char* pStop = std::find(pBytes, pEnd, '\n');
        const auto nPart = static_cast<std::size_t>(pStop - pBytes);
        m_bTooLong |= m_line.size() + nPart > LONGEST;
        if (!m_bTooLong) m_line.append(pBytes, nPart);
        if (pStop == pEnd) return 1;
        if (!EndLine(pQueue)) return 0;
        pBytes = pStop + 1;
    }
    return 1;
}

int CLineCutter::Finish(CLineQueue* pQueue)
{
    return m_line.empty() && !m_bTooLong ? 1 : EndLine(pQueue);
}

} // namespace studio
