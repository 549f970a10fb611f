// What the fuzzers that act as a host share: files, a device context, a drawing's tree as the
// exported functions tell it, and what becomes of it when it is saved and opened again.
#pragma once

#include "fuzz/Fuzz.h"

#include "include/QELEngine.h"
#include "tests/native/GdiDouble.h"
#include "tests/native/KernelDouble.h"

#include <string>
#include <string_view>
#include <vector>

// One input's world: a disk in memory with nothing on it, and at its end no file open, no file
// forgotten, and no GDI object alive.
class CHostWorld {
public:
    CHostWorld();
    ~CHostWorld();
    CHostWorld(const CHostWorld&) = delete;
    CHostWorld& operator=(const CHostWorld&) = delete;

private:
    gdi::CLeakCheck m_leaks;
};

void WriteHostFile(const char* pszPath, const std::string& bytes);
std::string ReadHostFile(const char* pszPath); // empty when there is none

// What a host draws onto, in a state that is not the default, so that a change shows. At its end
// that state is as the host left it, but for the two colours that drawing may leave set.
class CHostDc {
public:
    CHostDc();
    ~CHostDc();
    CHostDc(const CHostDc&) = delete;
    CHostDc& operator=(const CHostDc&) = delete;
    [[nodiscard]] HDC Get() const { return m_hdc; }
    void CheckState() const;

private:
    HDC m_hdc;
    HBITMAP m_hBitmap; // dials are clipped to it
    HPEN m_hPen;
    HBRUSH m_hBrush;
    HGDIOBJ m_hOldBitmap;
    HGDIOBJ m_hOldPen;
    HGDIOBJ m_hOldBrush;
    std::string m_state;
};

// One element as the exported functions tell it.
struct HostElem {
    HQELELEM hElem = nullptr;
    int nDepth = 0;
    int nType = QEL_TYPE_NONE;
    std::string id;
    std::string attr; // the bytes of its record
};
using HostTree = std::vector<HostElem>; // parents first

// The element with all that is in it, every link checked from both sides. Empty for null.
HostTree ReadHostTree(HQELENGINE hEngine, HQELELEM hTop);

// Whether two trees are the same but for the handles.
bool IsSameTree(const HostTree& a, const HostTree& b);

// The tree that a drawing saved from this one opens as. What the format can say comes back as it
// was; what it cannot say (see docs/format.md) comes back as it promises.
HostTree Reopened(const HostTree& tree);

// The record of an element whose identifier and record stand there: bytes as a structure and back.
template <class T>
T RecordOf(const std::string& attr)
{
    T record{};
    FUZZ_CHECK(attr.size() == sizeof record);
    attr.copy(reinterpret_cast<char*>(&record), sizeof record);
    return record;
}
template <class T>
std::string BytesOf(const T& record)
{
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

// Lays numbers of the input over some words of a record.
void PatchRecord(std::string* pAttr, CInput& input);

// What an element costs to draw, in figures. The numbers of a drawing decide: a border of 65,535
// pixels is as many rings, a scale may have ten thousand ticks.
std::size_t DrawCost(int nType, const std::string& attr);

// Makes a record's numbers such that it costs little.
void KeepCheap(int nType, std::string* pAttr);

// Whether the drawing takes this record, and how it reads it back.
bool IsGoodRecord(int nType, const std::string& attr);
std::string TakenRecord(int nType, const std::string& attr);
