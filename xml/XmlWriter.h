// Writes the text of a drawing element by element, in the one layout that there is: an element to a
// line, no indent. The tree is written through it, and so is a document without a tree of its own.
#pragma once

#include "xml/XmlSink.h"

class CXmlWriter {
public:
    explicit CXmlWriter(CXmlSink& sink) : m_sink(sink) {}

    void Declaration(const char* pszVersion, const char* pszEncoding, const char* pszStandalone);
    // An element begins in the one that is open; then come its attributes, its text and its
    // children.
    void Start(const char* pszName, std::size_t nLen);
    void Attr(const char* pszName, std::size_t nNameLen, const char* pszValue,
              std::size_t nValueLen);
    void Text(const char* pszText, std::size_t nLen);
    void End(const char* pszName, std::size_t nLen);

private:
    void EndTag();

    CXmlSink& m_sink;
    bool m_bTagOpen = false; // the start tag of the last element still takes attributes
};
