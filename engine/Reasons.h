// Why an edit was refused, found when it has been: the edits themselves only say that they were.
#pragma once

#include "engine/QELEngine.h"

uint32_t WhyNotCreated(CQELEngine& engine, int32_t nType, const CQELDocElm* pParent,
                       const CQELDocElm* pAfter);
uint32_t WhyNotMoved(CQELEngine& engine, const CQELDocElm* pElm, const CQELDocElm* pParent,
                     const CQELDocElm* pAfter);
uint32_t WhyNotCopied(const CQELDocElm* pElm);
uint32_t WhyRecordNotSet(const CQELDocElm* pElm, const void* pRecord, int nSize);
// A value of a scale or meter. An id that no element has is an answer: QEL_ERROR_NONE.
uint32_t WhyValueNotTaken(CQELEngine& engine, uint32_t nId, uint32_t nSelector);
// An update. That nothing is dirty, or all of it clipped away, is an answer.
uint32_t WhyNotUpdated(CQELEngine& engine, HDC hdc);
