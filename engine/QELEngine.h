// The object behind an engine handle: one document and one view that are kept in step. Every file
// operation and every edit goes to the document first and is then mirrored into the view, whose
// elements are linked to the document elements that they draw.
#pragma once

#include "base/Failure.h"
#include "base/Handles.h"
#include "base/WideText.h"
#include "document/QELDocument.h"
#include "engine/Identifiers.h"
#include "engine/Places.h"
#include "render/QELView.h"
#include "render/SmoothBands.h"

struct UnitTurn;

class CQELEngine {
public:
    // bShowOnly: the document's elements are dropped once the view is built.
    explicit CQELEngine(bool bShowOnly) noexcept;
    virtual ~CQELEngine();
    CQELEngine(const CQELEngine&) = delete;
    CQELEngine& operator=(const CQELEngine&) = delete;

    // The file operations leave the reason in LastFailure when they fail.
    int Open(const char* pszPath); // null: a new drawing
    int Open(const XmlSource& source);
    int New() { return New({}); }
    int New(const TextEncoding& encoding);
    int OpenByName(const char* pszName); // ".\QEL\" + name + ".qel"
    int Save(const char* pszPath) { return Saved(m_document.Save(pszPath)); }
    int SaveWide(const wchar_t* pszPath) { return Saved(m_document.SaveWide(pszPath)); }
    // The bytes of a file, into a buffer of *pnSize bytes, null to ask how many they are: *pnSize
    // tells it, also when the buffer is too small.
    int Save(void* pBuffer, uint32_t* pnSize);
    int Close();

    CQELDocElm* CreateElem(int32_t nType, CQELDocElm* pParent, CQELDocElm* pAfter);
    int DeleteElem(CQELDocElm* pElm);
    int MoveElem(CQELDocElm* pElm, CQELDocElm* pParent, CQELDocElm* pAfter);
    CQELDocElm* CopyElem(CQELDocElm* pElm);
    int SetElemId(CQELDocElm* pElm, const char* pszId);
    static int GetElemAttr(const CQELDocElm* pElm, void* pBuffer, int* pnSize);
    int SetElemAttr(CQELDocElm* pElm, const void* pBuffer, int nSize);
    int SetElemRect(CQELDocElm* pElm, const RECT& rc);

    int GetRefSize(SIZE* pSize) const;
    int SetRefSize(SIZE size);
    int GetDrawRect(RECT* prc) const;
    int SetDrawRect(const RECT& rc);
    // Of the constants that are told in pixels; it outlives the drawing.
    int SetPixelScale(uint32_t nPercent);
    [[nodiscard]] uint32_t PixelScale() const { return m_rcDraw.px.Percent(); }
    // How many samples each way a pixel is the mean of; 0: none. It outlives the drawing, too.
    int SetSmooth(int32_t nSamples);
    [[nodiscard]] int32_t Smooth() const { return m_nSmooth; }
    // The whole drawing in a picture of that size, in the host's memory; see CSmoothBands::Render.
    int RenderBitmap(void* pBits, SIZE size, int32_t nStride, uint32_t nFlags);
    int SetFontFace(const wchar_t* pszFace); // null or empty: the system's own
    int GetDrawGraphRect(RECT* prc) const { return m_view.GetDrawGraphRect(m_rcDraw, prc); }
    int Draw(HDC hdc, const RECT& rcUpdate, uint32_t nFlags);
    int Rotate(int32_t nAngle);
    int SetBlinkState(int32_t nState);

    // The code page of texts, kept from drawing to drawing: PAGE_ANSI, PAGE_DECLARED, or one that
    // the system knows.
    [[nodiscard]] static bool IsTextPage(uint32_t nPage)
    {
        return nPage <= PAGE_DECLARED || IsKnownPage(nPage);
    }
    int SetTextPage(uint32_t nPage);
    [[nodiscard]] uint32_t TextPage() const { return m_nTextPage; }
    // The same, with the page that the drawing declares where that is what counts.
    [[nodiscard]] uint32_t PageInForce() const
    {
        return m_nTextPage == PAGE_DECLARED ? m_document.Encoding().nPage : m_nTextPage;
    }

    // Who bears which identifier, as long as no edit changes that; null without memory.
    [[nodiscard]] const CIdentifiers* Identifiers()
    {
        const bool bMade = m_identifiers.IsMade() || m_identifiers.Make(m_document.GetRoot());
        return bMade ? &m_identifiers : nullptr;
    }

    // The picture as it was last updated (engine/EngineUpdate.cpp). A result of 0 also where
    // nothing is dirty.
    int GetDirtyRect(RECT* prc);
    int GetDirtyRegion(HRGN hRegion);
    int Invalidate(const RECT* prc); // null: all of it
    int Validate();
    int Update(HDC hdc, HBRUSH hBackground); // null: the background is there

    // What stands where, as it is now; null without a drawing and without memory.
    [[nodiscard]] CPlaces* Places();
    [[nodiscard]] bool HasDrawing() const { return m_view.Root() != nullptr; }

    // Where things are (engine/EnginePlaces.cpp). Device points are in the units of the QEL rect.
    // Who asks by an identifier or for the one at a point has had the indexes made for that.
    int GetElemDrawRect(const CQELDocElm* pElm, RECT* prc) const;
    int GetIdDrawRect(const char* pszId, RECT* prc);
    CQELDocElm* FindElem(const char* pszId);
    CQELDocElm* ElemFromPoint(POINT pt);
    const char* IdFromPoint(POINT pt); // null for none
    int ElemToDevice(const CQELDocElm* pElm, POINT* ppt) const;
    int DeviceToElem(const CQELDocElm* pElm, POINT* ppt) const;
    // Whether an edit has succeeded since the drawing was opened, made or saved.
    [[nodiscard]] bool IsModified() const { return m_bModified; }
    // Of the last failed call on this engine's handle.
    [[nodiscard]] Failure& LastFailure() { return m_failure; }

    [[nodiscard]] CQELDocument& Document() { return m_document; }
    [[nodiscard]] CQELView& View() { return m_view; }
    [[nodiscard]] CHandleEntry& Handle() { return m_handle; }
    [[nodiscard]] uint32_t RefCount() const { return m_nRefCount; }
    void AddRef() { ++m_nRefCount; }
    void DropRef() { m_nRefCount -= m_nRefCount ? 1 : 0; }

private:
    int BuildViews();
    int KeepIdentifiers();
    CQELDocElm* ReplaceRoot();
    int MakeViews(CQELDocElm* pTop, CQELViewElm* pParent, CQELViewElm* pAfter);
    int MakeView(CQELDocElm* pElm, CQELViewElm* pParent, CQELViewElm* pAfter);
    int LoadView(CQELDocElm* pElm);
    int ReloadView(CQELDocElm* pElm);
    void GiveUp(CQELDocElm* pElm);
    static void GiveFillsBack(CQELDocElm* pTop);
    [[nodiscard]] bool IsInPicture(const CQELDocElm* pElm) const;
    void TakeRefSize();
    // Before every edit that changes the tree or an identifier.
    void ForgetPlaces()
    {
        m_identifiers.Forget();
        m_places.Forget();
    }
    RECT DirtyBox();
    void PaintDirty(HDC hdc, const QelRect& rcQel, const CDirtyArea& painted, const RECT& rcBox);
    int UpdateByPlace(HDC hdc, const QelRect& rcQel, const CDirtyArea& painted, const RECT& rcBox);
    int UpdateSmooth(HDC hdc, const CDirtyArea& painted, const RECT& rcPainted);
    [[nodiscard]] QelRect PaintRect() const; // with the samples of smooth draws
    int DrawSmooth(HDC hdc, uint32_t nFlags);
    friend class CDirtyPainter;
    void TouchPlaceOf(const CQELDocElm* pElm);
    void TouchFace(const CQELDocElm* pElm); // before and after something comes into it or leaves it
    static void TakeColorsAround(CQELViewElm* pTop);
    void TouchAll(); // before what may change the place of everything
    int TakeElemAttr(CQELDocElm* pElm, const void* pBuffer, int nSize);
    [[nodiscard]] UnitTurn TurnOfDrawing() const;
    bool MapElem(const CQELDocElm* pElm, UnitMap* pMap, UnitTurn* pTurn) const;
    int Fail(const Failure& failure);
    int Saved(int nResult);
    int Edited(int nResult); // the result of an edit
    void RegisterAll(CQELViewElm* pTop);
    void UnregisterAll(CQELViewElm* pTop);

    uint32_t m_nRefCount = 0; // show-only records that share this engine
    CQELDocument m_document;
    CQELView m_view;
    CIdentifiers m_identifiers;
    CPlaces m_places;
    uint32_t m_nTextPage = PAGE_ANSI;
    uint32_t m_nPerDrawing = 0; // cleared at every open
    SIZE m_refSize{DEFAULT_REF_SIZE, DEFAULT_REF_SIZE};
    QelRect m_rcDraw{0, 0, DEFAULT_REF_SIZE, DEFAULT_REF_SIZE};
    int32_t m_nRotation = 0; // the quarter turn that the view has been given, in degrees
    int32_t m_nSmooth = 0;
    CSmoothBands m_bands; // of smooth draws
    wchar_t m_szFace[LF_FACESIZE] = L"";
    bool m_bDrawn = false; // since all of it was dirty
    bool m_bShowOnly;
    bool m_bModified = false;
    Failure m_failure;
    CHandleEntry m_handle{HandleKind::Engine, this};
};
