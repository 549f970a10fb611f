// Lines of live data; see the header.
#include "tools/studio/model/DataLine.h"

#include "tools/studio/model/Values.h"

#include <algorithm>
#include <utility>

namespace studio {

namespace {

constexpr char BYTE_ORDER_MARK[] = "\xEF\xBB\xBF";
constexpr char SPACES[] = " \t";
constexpr std::size_t SHOWN = 60; // bytes of a bad line

std::string Trimmed(const std::string& text)
{
    const std::size_t nFirst = text.find_first_not_of(SPACES);
    if (nFirst == std::string::npos) return "";
    return text.substr(nFirst, text.find_last_not_of(SPACES) - nFirst + 1);
}

std::string Bare(const std::string& line)
{
    const std::size_t nFirst =
        line.starts_with(BYTE_ORDER_MARK) ? sizeof BYTE_ORDER_MARK - 1 : std::size_t{0};
    const std::size_t nEnd = line.size() - (line.ends_with('\r') ? 1 : 0);
    return line.substr(nFirst, std::max(nEnd, nFirst) - nFirst);
}

std::string Name(const std::string& line, std::size_t nEquals)
{
    return Trimmed(line.substr(0, nEquals));
}

std::size_t FindDividing(const std::string& line, const NameTest& isKnown)
{
    const std::size_t nFirst = line.find('=');
    for (std::size_t n = nFirst; n != std::string::npos; n = line.find('=', n + 1))
        if (isKnown(Name(line, n))) return n;
    return nFirst;
}

std::string Shortened(const std::string& line)
{
    return "'" + (line.size() > SHOWN ? line.substr(0, SHOWN) + "..." : line) + "'";
}

} // namespace

DataLine ReadDataLine(const std::string& line, const NameTest& isKnown)
{
    const std::string bare = Bare(line);
    if (Trimmed(bare).empty()) return {};
    const std::size_t nEquals = FindDividing(bare, isKnown);
    if (nEquals == std::string::npos)
        return {LineKind::Bad, "", "", Shortened(bare) + " has no '='; wanted is NAME=VALUE"};
    const std::string name = Name(bare, nEquals);
    if (name.empty())
        return {LineKind::Bad, "", "", Shortened(bare) + " has no name; wanted is NAME=VALUE"};
    return {LineKind::Value, name, bare.substr(nEquals + 1), ""};
}

int CDataLine::Take(const std::vector<DataTarget>& targets, const std::string& line)
{
    int nTaken = 0;
    std::string fault;
    for (const auto& [hEngine, pValues] : targets) {
        DataLine read =
            ReadDataLine(line, [&, hEngine = hEngine, pValues = pValues](const std::string& name) {
                return pValues->Knows(hEngine, name);
            });
        if (read.kind == LineKind::Blank) return 0;
        if (read.kind == LineKind::Value && pValues->Set(hEngine, read.name, read.text, &read.why))
            nTaken = 1;
        else if (fault.empty())
            fault = std::move(read.why);
    }
    m_nGood += static_cast<uint64_t>(nTaken);
    if (!nTaken) NoteBad(fault.empty() ? "no drawing is open" : std::move(fault));
    return nTaken;
}

void CDataLine::NoteBad(std::string why)
{
    ++m_nBad;
    m_lastFault = std::move(why);
}

} // namespace studio
