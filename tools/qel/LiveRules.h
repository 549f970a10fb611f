// What the checker knows of scales and meters beyond the form of their attributes: where they are
// drawn, which of them the host reaches, and what does not go together.
#pragma once

#include "document/Attributes.h"
#include "document/Crd.h"
#include "document/QELDocElm.h"
#include "tools/qel/Checker.h"
#include "tools/qel/HostIds.h"

namespace qel {

// The coordinates of a scale or meter go by its type.
const CrdForm& LiveCrdForm(const CQELDocElm& elm);

// How many of the coordinates must be there: the angles of a meter's arc may be missing.
std::size_t NeededNumbers(const CQELDocElm& elm, const CrdForm& form);

// Why nothing is drawn of a scale or meter in the place of these coordinates; empty when something
// is.
std::string WhyLiveIsNotDrawn(const CQELDocElm& elm);

// Whether there is a figure in an element that a bar can be painted in.
bool HasFigure(const XmlNode& node);

// Whether it is a meter that paints its value within the figures in it, and the element of the file
// has none.
bool LacksFace(const CQELDocElm& elm, const XmlNode& node);

// The rectangle in which something of it may show.
RECT LiveRect(const CQELDocElm& elm);

// The words that an attribute's keyword form knows; none for another form.
std::vector<std::string> WordsOfForm(const AttrForm& form);

// What is wrong with a range of its attributes; empty when nothing is.
std::string RangeFault(const CQELDocElm& elm);

// Follows the ids of all scales and meters of a drawing, in its order.
class CIdRules {
public:
    // nOffset: where its id stands, or the element.
    void Add(const CQELDocElm& elm, std::size_t nOffset);
    // The ones that the host does not reach, or not alone.
    void Tell(std::vector<Finding>* pFindings) const;

private:
    struct Entry {
        bool bMeter;
        uint32_t nId;
        HostReach reach;
        std::size_t nOffset;
    };

    [[nodiscard]] std::string Fault(const Entry& entry) const;

    CHostIds m_ids;
    std::vector<Entry> m_entries;
};

} // namespace qel
