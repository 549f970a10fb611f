// What smooth pictures, scaled pixels and pictures in memory cost over plain drawing.
#pragma once

void MeasureSmoothDrawing();
void MeasureSmoothUpdate();
void MeasurePixelScale();
void MeasurePictures();
void MeasureSmoothMemory();

// For who takes turns with another program: the mixed shapes as SVG, and a smooth draw of them for
// each line that is read, of which the nanoseconds are printed. A line that is not empty names a
// file for the rows of the picture.
int WriteSvg(const char* pszPath);
int DrawByLine();
