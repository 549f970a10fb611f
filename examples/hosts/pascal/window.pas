{ A window with a live drawing, without flicker: its values swing between the ends of their scales.
  A click shows in the title what was hit.

      window DRAWING [ID [FRAMES]]

  With ID only what bears this identifier swings, with FRAMES it stands still after so many frames. For Free
  Pascal and for Delphi. Built in this folder:
      fpc -Twin32 window.pas
}
program window;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$APPTYPE GUI}

uses
  Windows, Messages, SysUtils, QELEngine;

const
  FRAME_TIME = 40;     { milliseconds }
  EASING_TIME = 300;   { in which a needle moves to a new value }
  FRAMES_A_VALUE = 10; { from one new value to the next }
  STEP = 0.25;         { of the way through the scale from value to value }
  LAMP_RANGE = 1.5;    { of a lamp, whose number is truncated: off, and on near the end }
  TEXT_RANGE = 99.0;   { a text alone has no scale }
  USUAL_DPI = 96;
  CLEARTYPE_QUALITY = 5; { two colours lose strokes in small sizes }
  MSG_DPI_CHANGED = $02E0; { WM_DPICHANGED, which older units do not have }
  CLASS_NAME = 'LiveDrawing';

function SetProcessDPIAware: LongBool; stdcall; external 'user32.dll';

type
  { A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so nobody
    ever sees a half-drawn picture. }
  TPicture = class
  private
    FDC: HDC;
    FFont: HFONT;
    FBitmap: HBITMAP;
    FPreviousFont, FPreviousBitmap: HGDIOBJ;
  public
    constructor Create;
    destructor Destroy; override;
    procedure Resize(Wnd: HWND; Engine: HQELENGINE; Width, Height: Integer);
    procedure Update(Engine: HQELENGINE);
    procedure CopyTo(DC: HDC; const R: TRect);
  end;

constructor TPicture.Create;
begin
  FDC := CreateCompatibleDC(0);
  { Texts take the face of this font and choose their own size. }
  FFont := CreateFontA(16, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0,
    'Courier New');
  FPreviousFont := SelectObject(FDC, FFont);
end;

destructor TPicture.Destroy;
begin
  SelectObject(FDC, FPreviousFont);
  DeleteObject(FFont);
  if FBitmap <> 0 then
    DeleteObject(SelectObject(FDC, FPreviousBitmap));
  DeleteDC(FDC);
  inherited Destroy;
end;

{ A new bitmap that fits the window. It is empty, which the engine cannot know. }
procedure TPicture.Resize(Wnd: HWND; Engine: HQELENGINE; Width, Height: Integer);
var
  WindowDC: HDC;
  Bitmap: HBITMAP;
  Previous: HGDIOBJ;
  R: TRect;
begin
  WindowDC := GetDC(Wnd);
  Bitmap := CreateCompatibleBitmap(WindowDC, Width, Height);
  ReleaseDC(Wnd, WindowDC);
  Previous := SelectObject(FDC, Bitmap);
  if FBitmap <> 0 then
    DeleteObject(Previous)
  else
    FPreviousBitmap := Previous;
  FBitmap := Bitmap;
  SetRect(R, 0, 0, Width, Height);
  QELSetQELRect(Engine, @R);
  QELInvalidate(Engine, nil);
end;

{ Paints what is not right any more, and nothing else. }
procedure TPicture.Update(Engine: HQELENGINE);
begin
  QELUpdate(Engine, FDC, GetSysColorBrush(COLOR_BTNFACE));
end;

procedure TPicture.CopyTo(DC: HDC; const R: TRect);
begin
  BitBlt(DC, R.Left, R.Top, R.Right - R.Left, R.Bottom - R.Top, FDC, R.Left, R.Top, SRCCOPY);
end;

type
  { What swings, by its identifier. }
  TLiveValue = record
    Id: AnsiString;
    Min, Max: Double;
  end;

var
  Engine: HQELENGINE;
  Picture: TPicture;
  Values: array of TLiveValue;
  Frames: Integer = -1; { still to be shown; negative: for ever }
  Frame: Integer = 0;
  Place: Double = 0.0;  { from 0 to 1 }
  Change: Double = STEP;

{ A meter or scale tells the ends of its scale. }
function MakeValue(const Id: AnsiString; Kind: LongInt): TLiveValue;
begin
  Result.Id := Id;
  Result.Min := 0.0;
  Result.Max := LAMP_RANGE;
  if Kind = QEL_TYPE_TEXT then
    Result.Max := TEXT_RANGE;
  if QELGetSelector(Engine, PAnsiChar(Id), QEL_SEL_MAX, @Result.Max) <> 0 then
    QELGetSelector(Engine, PAnsiChar(Id), QEL_SEL_MIN, @Result.Min);
end;

{ All identifiers of the drawing that take a value, or the one that is asked for. }
procedure FindValues(const Only: AnsiString);
var
  Id: array[0..QEL_TEXT_SIZE - 1] of AnsiChar;
  Kind: LongInt;
  Index: LongWord;
  Value: TLiveValue;
begin
  Index := 0;
  while QELGetLiveId(Engine, Index, @Id, SizeOf(Id), @Kind) <> 0 do
  begin
    Inc(Index);
    Value := MakeValue(PAnsiChar(@Id), Kind);
    if ((Only <> '') and (Only <> Value.Id)) or (QELSetValue(Engine, @Id, Value.Min) = 0) then
      Continue;
    QELSetEasing(Engine, @Id, EASING_TIME);
    SetLength(Values, Length(Values) + 1);
    Values[High(Values)] := Value;
  end;
end;

procedure SetValues;
var
  Index: Integer;
begin
  if (Place + Change < 0.0) or (Place + Change > 1.0) then
    Change := -Change;
  Place := Place + Change;
  for Index := 0 to High(Values) do
    QELSetValue(Engine, PAnsiChar(Values[Index].Id),
      Values[Index].Min + (Values[Index].Max - Values[Index].Min) * Place);
end;

{ Tells the window system what has changed, place by place. }
procedure InvalidateDirty(Wnd: HWND);
var
  Region: HRGN;
begin
  Region := CreateRectRgn(0, 0, 0, 0);
  if QELGetDirtyRegion(Engine, Region) <> 0 then
    InvalidateRgn(Wnd, Region, False); { False: nothing is erased }
  DeleteObject(Region);
end;

procedure NextFrame(Wnd: HWND);
var
  Moving: Integer;
begin
  Inc(Frame);
  if (Frames <> 0) and (Frame mod FRAMES_A_VALUE = 0) then
    SetValues;
  Moving := QELAdvance(Engine, FRAME_TIME);
  InvalidateDirty(Wnd);
  if Frames > 0 then
    Dec(Frames);
  if (Frames = 0) and (Moving = 0) then
    KillTimer(Wnd, 1);
end;

{ The title tells what was hit, by its identifier. }
procedure ShowId(Wnd: HWND; X, Y: Integer);
var
  Id: array[0..QEL_TEXT_SIZE - 1] of AnsiChar;
  P: TPoint;
begin
  P.X := X;
  P.Y := Y;
  if QELIdFromPoint(Engine, @P, @Id, SizeOf(Id)) <> 0 then
    SetWindowTextA(Wnd, @Id);
end;

{ Lines, borders and hatches are to be as wide on every screen as on a usual one. }
procedure SetResolution(Dpi: Integer);
begin
  QELSetPixelScale(Engine, MulDiv(100, Dpi, USUAL_DPI));
end;

procedure MoveTo(Wnd: HWND; const R: TRect);
begin
  SetWindowPos(Wnd, 0, R.Left, R.Top, R.Right - R.Left, R.Bottom - R.Top, SWP_NOZORDER or SWP_NOACTIVATE);
end;

function WindowProc(Wnd: HWND; Msg: UINT; WParam: WPARAM; LParam: LPARAM): LRESULT; stdcall;
var
  Paint: TPaintStruct;
  DC: HDC;
begin
  Result := 0;
  case Msg of
    WM_CREATE:
      SetTimer(Wnd, 1, FRAME_TIME, nil);
    WM_SIZE:
      if WParam <> SIZE_MINIMIZED then
      begin
        Picture.Resize(Wnd, Engine, LParam and $FFFF, (LParam shr 16) and $FFFF);
        InvalidateRect(Wnd, nil, False);
      end;
    MSG_DPI_CHANGED: { another screen, or the same one set anew: the system says what fits }
      begin
        SetResolution(WParam and $FFFF);
        MoveTo(Wnd, PRect(LParam)^);
        InvalidateDirty(Wnd);
      end;
    WM_TIMER:
      NextFrame(Wnd);
    WM_LBUTTONDOWN: { never negative without a capture }
      ShowId(Wnd, LParam and $FFFF, (LParam shr 16) and $FFFF);
    WM_ERASEBKGND:
      Result := 1; { erasing first is what flickers }
    WM_PAINT:
      begin
        DC := BeginPaint(Wnd, Paint);
        Picture.Update(Engine);
        Picture.CopyTo(DC, Paint.rcPaint);
        EndPaint(Wnd, Paint);
      end;
    WM_DESTROY:
      PostQuitMessage(0);
  else
    Result := DefWindowProcA(Wnd, Msg, WParam, LParam);
  end;
end;

{ A window whose inside has the drawing's reference size, in the units of the screen. }
function OpenWindow(const Title: AnsiString): HWND;
var
  WindowClass: TWndClassA;
  Size: TSize;
  ScreenDC: HDC;
  Dpi: Integer;
  R: TRect;
begin
  FillChar(WindowClass, SizeOf(WindowClass), 0);
  WindowClass.lpfnWndProc := @WindowProc;
  WindowClass.hInstance := HInstance;
  WindowClass.hCursor := LoadCursor(0, IDC_ARROW);
  WindowClass.lpszClassName := CLASS_NAME;
  RegisterClassA(WindowClass);

  QELGetRefSize(Engine, @Size);
  ScreenDC := GetDC(0);
  Dpi := GetDeviceCaps(ScreenDC, LOGPIXELSX);
  ReleaseDC(0, ScreenDC);
  SetResolution(Dpi);
  SetRect(R, 0, 0, MulDiv(Size.cx, Dpi, USUAL_DPI), MulDiv(Size.cy, Dpi, USUAL_DPI));
  AdjustWindowRect(R, WS_OVERLAPPEDWINDOW, False);
  Result := CreateWindowExA(0, CLASS_NAME, PAnsiChar(Title), WS_OVERLAPPEDWINDOW, Integer(CW_USEDEFAULT),
    Integer(CW_USEDEFAULT), R.Right - R.Left, R.Bottom - R.Top, 0, 0, HInstance, nil);
end;

procedure Show(const Path: AnsiString);
var
  Wnd: HWND;
  Message: TMsg;
begin
  if QELOpenFile(Engine, PAnsiChar(Path)) = 0 then
    raise Exception.Create('The drawing cannot be opened.');
  FindValues(AnsiString(ParamStr(2)));
  Wnd := OpenWindow(Path);
  if Wnd = 0 then
    raise Exception.Create('There is no window.');
  ShowWindow(Wnd, SW_SHOWNORMAL);
  while GetMessageA(Message, 0, 0, 0) do
  begin
    TranslateMessage(Message);
    DispatchMessageA(Message);
  end;
end;

{ The drawing is lines: it wants the real pixels of every screen, not a stretched picture. Systems older than
  Windows 10 know one resolution for all screens, and not the newer function. }
procedure AskForRealPixels;
const
  PER_MONITOR = -3;
  PER_MONITOR_V2 = -4;
type
  TSetContext = function(Context: THandle): LongBool; stdcall;
var
  SetContext: TSetContext;
begin
  @SetContext := GetProcAddress(GetModuleHandle('user32.dll'), 'SetProcessDpiAwarenessContext');
  if Assigned(SetContext) and (SetContext(THandle(PER_MONITOR_V2)) or SetContext(THandle(PER_MONITOR))) then
    Exit;
  SetProcessDPIAware;
end;

begin
  AskForRealPixels;
  Frames := StrToIntDef(ParamStr(3), -1);
  Picture := TPicture.Create;
  Engine := CreateQELEngine;
  try
    Show(AnsiString(ParamStr(1)));
  except
    on Trouble: Exception do
    begin
      MessageBoxA(0, PAnsiChar(AnsiString(Trouble.Message)), CLASS_NAME, MB_ICONERROR);
      ExitCode := 1;
    end;
  end;
  DestroyQELEngine(Engine); { after the window, which draws as long as it lives }
  Picture.Free;
end.
