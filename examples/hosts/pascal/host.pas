{ A host in Pascal without a window: draws a drawing into a bitmap in memory and writes it as a file.

      host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]

  A setting is ID=VALUE (the current value of the meter or scale with that id), ID.SELECTOR=VALUE (another
  of its properties, by the number of QEL_SEL_...) or gradient=KIND (0 to 13, painted behind the drawing).
  Values with a point are real numbers.

  For Free Pascal and for Delphi; QELEngine.pas has the declarations. Built in this folder:
      fpc -Twin32 host.pas
}
program host;

{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$APPTYPE CONSOLE}

uses
  Windows, SysUtils, QELEngine;

const
  GREY = COLORREF($C0C0C0);
  WHITE = COLORREF($FFFFFF);
  FONT_HEIGHT = 16;         { texts take the face of this font and choose their own size }
  CLEARTYPE_QUALITY = 5;    { two colours lose strokes in small sizes }
  PIXELS_PER_METRE = 3780;  { 96 dots per inch }

type
  ETrouble = class(Exception);

  { A bitmap that can be drawn on. Its rows run from the bottom up, as in a file. }
  TCanvas = class
  private
    FDC: HDC;
    FBitmap: HBITMAP;
    FPrevious: HGDIOBJ;
    FInfo: TBitmapInfo;
    FBits: Pointer;
  public
    constructor Create(Width, Height: Integer);
    destructor Destroy; override;
    procedure Write(const Path: AnsiString);
    property DC: HDC read FDC;
  end;

constructor TCanvas.Create(Width, Height: Integer);
begin
  FillChar(FInfo, SizeOf(FInfo), 0);
  FInfo.bmiHeader.biSize := SizeOf(FInfo.bmiHeader);
  FInfo.bmiHeader.biWidth := Width;
  FInfo.bmiHeader.biHeight := Height;
  FInfo.bmiHeader.biPlanes := 1;
  FInfo.bmiHeader.biBitCount := 32;
  FInfo.bmiHeader.biSizeImage := Width * Height * 4;
  FInfo.bmiHeader.biXPelsPerMeter := PIXELS_PER_METRE;
  FInfo.bmiHeader.biYPelsPerMeter := PIXELS_PER_METRE;
  FDC := CreateCompatibleDC(0);
  FBitmap := CreateDIBSection(FDC, FInfo, DIB_RGB_COLORS, FBits, 0, 0);
  if FBitmap = 0 then
    raise ETrouble.Create('there is no picture of this size');
  FPrevious := SelectObject(FDC, FBitmap);
end;

destructor TCanvas.Destroy;
begin
  if FPrevious <> 0 then
    SelectObject(FDC, FPrevious);
  if FBitmap <> 0 then
    DeleteObject(FBitmap);
  DeleteDC(FDC);
  inherited Destroy;
end;

procedure TCanvas.Write(const Path: AnsiString);
var
  Header: TBitmapFileHeader;
  Target: file;
begin
  FillChar(Header, SizeOf(Header), 0);
  Header.bfType := $4D42; { "BM" }
  Header.bfOffBits := SizeOf(Header) + SizeOf(FInfo.bmiHeader);
  Header.bfSize := Header.bfOffBits + FInfo.bmiHeader.biSizeImage;
  GdiFlush; { GDI may still hold calls back; the bits are read directly }
  AssignFile(Target, string(Path));
  Rewrite(Target, 1);
  try
    BlockWrite(Target, Header, SizeOf(Header));
    BlockWrite(Target, FInfo.bmiHeader, SizeOf(FInfo.bmiHeader));
    BlockWrite(Target, FBits^, FInfo.bmiHeader.biSizeImage);
  finally
    CloseFile(Target);
  end;
end;

{ The engine paints onto whatever stands there, so the background comes first. Kind -1: plain grey. }
procedure PaintBackground(DC: HDC; const R: TRect; Kind: Integer);
var
  Gradient: HQELGRADIENT;
  Brush: HBRUSH;
begin
  if Kind >= 0 then
  begin
    Gradient := QELCreateGradientDescriptor(@R, Kind, WHITE, GREY);
    if Gradient = nil then
      raise ETrouble.Create('there is no such gradient');
    FillRect(DC, R, QELGetGradientBrush(Gradient)); { the descriptor owns the brush }
    QELCloseGradientDescriptor(Gradient);
  end
  else
  begin
    Brush := CreateSolidBrush(GREY);
    FillRect(DC, R, Brush);
    DeleteObject(Brush);
  end;
end;

{ Raises when the setting is not understood, or no meter or scale of the drawing takes it. }
procedure Apply(Engine: HQELENGINE; const Setting: string);
var
  Name, Value: string;
  Id, Selector: LongWord;
  Real: Double;
  Code, Taken: Integer;
begin
  Name := Copy(Setting, 1, Pos('=', Setting) - 1);
  Value := Copy(Setting, Pos('=', Setting) + 1, Length(Setting));
  Selector := QEL_SEL_VALUE;
  if Pos('.', Name) > 0 then
  begin
    Selector := StrToInt(Copy(Name, Pos('.', Name) + 1, Length(Name)));
    Name := Copy(Name, 1, Pos('.', Name) - 1);
  end;
  Id := StrToInt(Name);
  if Pos('.', Value) > 0 then
  begin
    Val(Value, Real, Code); { a point whatever the system's settings say }
    if Code <> 0 then
      raise ETrouble.Create(Setting);
    Taken := QELSetScaleParamf(Engine, Id, Selector, Real);
  end
  else
    Taken := QELSetScaleParam(Engine, Id, Selector, LongWord(StrToInt(Value)));
  if Taken = 0 then
    raise ETrouble.Create(Setting + ': nothing in the drawing takes this');
end;

procedure Draw(Engine: HQELENGINE; DC: HDC; const R: TRect; const Face: AnsiString);
var
  Font: HFONT;
  Previous: HGDIOBJ;
  Drawn: Integer;
begin
  Font := CreateFontA(FONT_HEIGHT, 0, 0, 0, 0, 0, 0, 0, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0, PAnsiChar(Face));
  Previous := SelectObject(DC, Font);
  Drawn := QELDraw(Engine, DC, @R, QEL_DRAW_FULL);
  SelectObject(DC, Previous);
  DeleteObject(Font);
  if Drawn = 0 then
    raise ETrouble.Create('the drawing cannot be drawn');
end;

procedure Run;
var
  Engine: HQELENGINE;
  Canvas: TCanvas;
  R: TRect;
  N, Kind: Integer;
begin
  R.Left := 0;
  R.Top := 0;
  R.Right := StrToInt(ParamStr(3));
  R.Bottom := StrToInt(ParamStr(4));
  Kind := -1;
  Canvas := TCanvas.Create(R.Right, R.Bottom);
  Engine := CreateQELEngine;
  try
    { The cast converts to the ANSI code page; QELOpenFileU takes a wide path. }
    if QELOpenFile(Engine, PAnsiChar(AnsiString(ParamStr(1)))) = 0 then
      raise ETrouble.Create('the drawing cannot be opened');
    QELSetQELRect(Engine, @R);
    for N := 6 to ParamCount do
      if Copy(ParamStr(N), 1, 9) = 'gradient=' then
        Kind := StrToInt(Copy(ParamStr(N), 10, 2))
      else
        Apply(Engine, ParamStr(N));
    PaintBackground(Canvas.DC, R, Kind);
    Draw(Engine, Canvas.DC, R, AnsiString(ParamStr(5)));
    Canvas.Write(AnsiString(ParamStr(2)));
  finally
    DestroyQELEngine(Engine);
    Canvas.Free;
  end;
end;

begin
  if ParamCount < 5 then
  begin
    WriteLn(ErrOutput, 'host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]');
    Halt(2);
  end;
  try
    Run;
  except
    on E: Exception do
    begin
      WriteLn(ErrOutput, 'host: ', E.Message);
      Halt(1);
    end;
  end;
end.
