{ A window with a live drawing, without flicker: a meter swings between the ends of its scale.

      window DRAWING [METER-ID [FRAMES]]

  With FRAMES it stands still after so many steps. For Free Pascal and for Delphi. Built in this folder:
      fpc -Twin32 window.pas
}
program window;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$APPTYPE GUI}

uses
  Windows, Messages, SysUtils, QELEngine;

const
  MAX_VALUE = 100;
  STEP = 2;         { of the value from frame to frame }
  FRAME_TIME = 40;  { milliseconds }
  USUAL_DPI = 96;
  CLEARTYPE_QUALITY = 5; { two colours lose strokes in small sizes }
  MSG_DPI_CHANGED = $02E0; { WM_DPICHANGED, which older units do not have }
  CLASS_NAME = 'LiveDrawing';

function SetProcessDPIAware: LongBool; stdcall; external 'user32.dll';

type
  { A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so nobody
    ever sees a half-drawn picture, and the engine can draw its moving parts over it. }
  TPicture = class
  private
    FDC: HDC;
    FFont: HFONT;
    FBitmap: HBITMAP;
    FPreviousFont, FPreviousBitmap: HGDIOBJ;
    FRect: TRect;
  public
    constructor Create;
    destructor Destroy; override;
    procedure Resize(Wnd: HWND; Width, Height: Integer);
    procedure DrawWhole(Engine: HQELENGINE);
    procedure DrawMoving(Engine: HQELENGINE);
    procedure CopyTo(DC: HDC);
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

{ A new bitmap that fits the window. It has to be drawn fully before it is shown. }
procedure TPicture.Resize(Wnd: HWND; Width, Height: Integer);
var
  WindowDC: HDC;
  Bitmap: HBITMAP;
  Previous: HGDIOBJ;
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
  SetRect(FRect, 0, 0, Width, Height);
end;

procedure TPicture.DrawWhole(Engine: HQELENGINE);
begin
  QELSetQELRect(Engine, @FRect);
  FillRect(FDC, FRect, GetSysColorBrush(COLOR_BTNFACE));
  QELDraw(Engine, FDC, @FRect, QEL_DRAW_FULL);
end;

procedure TPicture.DrawMoving(Engine: HQELENGINE);
begin
  QELDraw(Engine, FDC, @FRect, 0);
end;

procedure TPicture.CopyTo(DC: HDC);
begin
  BitBlt(DC, 0, 0, FRect.Right, FRect.Bottom, FDC, 0, 0, SRCCOPY);
end;

var
  Engine: HQELENGINE;
  Picture: TPicture;
  Meter: LongWord = 0;
  Frames: Integer = -1; { still to be shown; negative: for ever }
  Value: Integer = 0;
  Change: Integer = STEP;

procedure NextFrame(Wnd: HWND);
begin
  if (Value + Change < 0) or (Value + Change > MAX_VALUE) then
    Change := -Change;
  Inc(Value, Change);
  QELSetScaleStatus(Engine, Meter, Value);
  Picture.DrawMoving(Engine);
  InvalidateRect(Wnd, nil, False); { False: nothing is erased }
  if Frames > 0 then
  begin
    Dec(Frames);
    if Frames = 0 then
      KillTimer(Wnd, 1);
  end;
end;

procedure MoveTo(Wnd: HWND; const R: TRect);
begin
  SetWindowPos(Wnd, 0, R.Left, R.Top, R.Right - R.Left, R.Bottom - R.Top, SWP_NOZORDER or SWP_NOACTIVATE);
end;

function WindowProc(Wnd: HWND; Msg: UINT; WParam: WPARAM; LParam: LPARAM): LRESULT; stdcall;
var
  Paint: TPaintStruct;
begin
  Result := 0;
  case Msg of
    WM_CREATE:
      SetTimer(Wnd, 1, FRAME_TIME, nil);
    WM_SIZE:
      if WParam <> SIZE_MINIMIZED then
      begin
        Picture.Resize(Wnd, LParam and $FFFF, (LParam shr 16) and $FFFF);
        Picture.DrawWhole(Engine);
        InvalidateRect(Wnd, nil, False);
      end;
    MSG_DPI_CHANGED: { another screen, or the same one set anew: the system says what fits }
      MoveTo(Wnd, PRect(LParam)^);
    WM_TIMER:
      NextFrame(Wnd);
    WM_ERASEBKGND:
      Result := 1; { erasing first is what flickers }
    WM_PAINT:
      begin
        Picture.CopyTo(BeginPaint(Wnd, Paint));
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
  QELSetScaleParam(Engine, Meter, QEL_SEL_MAX, MAX_VALUE);
  QELSetScaleParam(Engine, Meter, QEL_SEL_SCALE_END, MAX_VALUE);
  QELSetScaleStatus(Engine, Meter, 0);
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
  Meter := StrToIntDef(ParamStr(2), 0);
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
