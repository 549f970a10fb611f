# Tests of the engine that the native build does not run, and why. All others of tests/*Tests.cpp run.

set(QEL_LEFT_OUT)

# Pixels of curves. Pixels of every class under a clip, and calls counted in the import table.
# The same of bodies under the clip of a face, on surfaces that map. Letters of faces that are not here.
# Gradients in the memory of a surface, which native/SampleGradientFaultTests.cpp has.
set(QEL_FILES_LEFT_OUT BandStrokeTests.cpp ClippedPictureTests.cpp FaceClipTests.cpp LegibleTests.cpp PaintedRectTests.cpp
  SampleGradientTests.cpp ScaledClockTests.cpp ShownPictureTests.cpp)

# They look at pixels of curves, slanted lines, polygons or dashes.
list(APPEND QEL_LEFT_OUT
  ArcAxis.CoversTheAnglesOfItsSweep
  ArcMeter.AnAlarmArcTooShortForTwoEndsLeavesNoPixel
  ArcFill.AWholeSweepIsADisc
  ArcShape.IsDrawnCounterClockwiseWhateverTheDirectionWas
  Bar3D.BodyFromABaseStaysInTheColumnToo
  Bar3D.BodyGrowsWithTheValueAndLeavesTheRestEmpty
  Bar3D.BodyStaysInTheColumnAtEveryValue
  Bar3D.BoxHasAFrontASlantedSideAndATop
  Bar3D.CylinderFillsTheColumnAcrossWithRoundEnds
  Bar3D.FillOnlyLeavesTheOldBodyStanding
  Bar3D.FrontHasTheHatchAndTheOtherFacesTheSolidBarColor
  Bar3D.HorizontalBodyNeverReachesTheLastColumnOfPixels
  Bar3D.OutlineIsInTheScaleColors
  Bar3D.OutlineStaysInTheColumnAtEveryValue
  BarFill3D.CapIsAnEllipseInBrushAndColors
  ChordOrPieShape/*.IsDrawnCounterClockwiseWhateverTheDirectionWas
  CircleShape.StaysRoundInTheMiddleOfAWideOrHighBox
  ClockMarks.HoursStandOutAmongTheMinutes
  Curve.LeavesTheDeviceContextAsItWasAndUsesItsPen
  DialComponents.TakeEveryRadiusOfALayerAtAnyAngleAndPlace
  EngineObject.ShowOnlyDropsTheElementsAndStillDraws
  LineShape.AFillStylePaintsTheGapsInColorB
  MeterView.TheFaceIsDrawnInItsColorWithoutHatchInAFullDrawOnly
  PieMeters/*.AHatchedSectorHasBothColorsAndTheEraseIsSolid
  PieMeters/*.PaintsSectorAndEraseWithoutOutline
  PieUpgradeMeter.FrameLeavesTheFillToBeSeen
  PieUpgradeMeter.PaintsMarksInScaleColorInsideTheRadiusAlone
  RoundGauge.AnAlarmBandTooShortForTwoEndsLeavesNoPixel
  ScaleView.BlinkingColorsAreBlackInTheDarkPhase
  ScaleView.HiddenMarksLeaveFillAndPointer
  ScaleView.RoundTypesFillOnlyByTheStyle
  SectorMeter.HasItsOwnColorForEachOf32Sectors
  SectorMeter.IsClippedToTheMeterRectangle
  SectorMeter.SkipsASectorWithoutWidthButDrawsAWholeDisc
  SectorMeter.StartsAtTheBottomAndGoesClockwise
  ShapeTools.ABrushThatCannotBeMadeLeavesTheOneOfTheDeviceContext)

# They compare the edge of a region with that of the figure, pixel by pixel.
list(APPEND QEL_LEFT_OUT
  ChordOrPieShape/*.RegionIsTheFilledFigureAtALargeSize
  ChordOrPieShape/*.RegionIsTheFilledFigureForEveryStartAndEnd
  ChordOrPieShape/*.RegionIsTheFilledFigureForFlatEllipses
  ChordOrPieShape/*.RegionIsTheFilledFigureForVeryFlatEllipses
  CircleShape.RegionIsThatOfTheSquare
  EllipseShape.RegionIsElliptic
  PolygonShape.RegionIsTheFilledFigure
  RoundRectShape.RegionIsThatOfTheMappedRectangle)

# Figures lie over others and erase them: which pixels are left can be told from pixels alone.
list(APPEND QEL_LEFT_OUT
  ArcMeter.UpdatesEndInThePictureOfAFullDraw
  Bar3D.TheNextPaintOfABoxTakesTheOldOneAway
  Bar3D.TheNextPaintOfACylinderTakesTheOldOneAway
  CircleMeter.PixelsOfADrawAndAnUpdateAreThoseOfTheRawCalls
  CircleMeter.UpdatesEndInThePictureOfAFullDraw
  Clock.ErasesTheHandsOfTheTimeThatItLastDrew
  ClockHands.AreErasedWhollyInTheFaceColor
  PieMeters/*.UpdatesEndInThePictureOfAFullDraw
  SectorMeter.EveryDrawPaintsTheWholeChartAnew)

# They look at pixels of texts, which have no shape here.
list(APPEND QEL_LEFT_OUT
  Bar3D.ReadOutStaysInTheColumnAtEveryValue
  ClockNumerals.StandClearOfTheMarks
  TextShape.BackgroundIsTouchedOnlyWithAFillStyle)

# They compare pixels of figures whose patterns or regions were made of what shows with those of the whole.
list(APPEND QEL_LEFT_OUT
  FaceRegion.OfOneDrawsClipIsNotThatOfTheNext
  PolygonShape.AGradientBeginsAtTheDeviceOriginAndReachesNegativePoints
  ShownBrush.HasThePixelsOfTheWhole
  ShownRegion.OfAChordIsItsRegionWhereItShowsWithTheBoxOfTheWhole
  ShownRegion.OfAPieIsItsRegionWhereItShowsWithTheBoxOfTheWhole)

# They read a metafile of the system's own form, with what a recording does not keep.
list(APPEND QEL_LEFT_OUT
  RoundGauge.ReadOutIsBoldAndNumbersAreNot)

# They put functions of their own into the import table of a Windows program. Short reads and writes, reads
# that give nothing, taken names and failures of memory are tested by qel_fault_tests here.
list(APPEND QEL_LEFT_OUT
  XmlLoad.AReadThatStallsIsGivenUpAfter16Tries
  XmlLoad.ShortReadsAreContinued
  XmlMemory.LoadingFailsCleanlyAtEachRequest
  XmlMemory.SavingFailsCleanlyAtEachRequest
  XmlMemory.TheFilesOwnBufferIsError2
  XmlSave.AWriteThatStallsIsGivenUpAfter16TriesAndTheOldFileStays
  XmlSave.ItsFileIsHeldFromItsCreationUntilItHasItsName
  XmlSave.ShortWritesAreContinued)

# Copies hold one brush, as hosts that copy the members have it, and both delete it. The strict stand-in does
# not let that pass.
list(APPEND QEL_LEFT_OUT
  Draft.GivesACopyTheSameBrushAndBothCanBeDestroyed)

# It has a bar drawn without a region: the null handle is handed on to the system, which refuses it.
list(APPEND QEL_LEFT_OUT
  BarFill.DrawsNothingWithoutSegmentBrushOrRegion)

# Of the tests that see what hosts see: those that look at the DLL as a file, at its calls, at what other
# processes hold open, at what only a real disk keeps of a file, at what the system itself counts, at pixels on
# surfaces that map.
set(QEL_HOST_FILES_LEFT_OUT BarFaceTests.cpp CompatibilityTests.cpp ExportTests.cpp FileFaultTests.cpp
  FileSystemTests.cpp HeldUpTests.cpp LeakTests.cpp ScaledElementTests.cpp ScaledMeterTests.cpp ScaledShapeTests.cpp
  TruthTests.cpp UpdateOrderTests.cpp)

# They look at pixels of figures that have none here, or at the memory of a bitmap.
set(QEL_HOST_LEFT_OUT
  Conventions.DrawingClearsTheAlphaOfABitmap
  Format.ADialWithBothEndsInOneColumnShowsItsNumbersInACornerAlone
  Format.ASecondLineShowsNoMoreThanTheRectangleHasLeftBelowTheFirst
  Format.ATextHasCellsOfSixByTwelveAtLeastAndIsCutAtItsRectangle
  Format.AnAmpersandInATextUnderlinesTheNextLetterAndTwoShowOne
  Format.GradientsOfBarsAndPiesRunFromParameterTwoAndOfShapesFromParameterThree
  Format.HatchZeroOfBarsPiesAndScalesIsParameterTwoAndOfAllOthersParameterThree
  PartialRedraw.ADialThatOnlyFillsLeavesTracesOfItsNeedles
  MeterFace.WhatLeavesItIsDrawnAsTheFileHasIt
  PartialRedraw.ADrawingWithAScaleIsAlwaysPaintedWhole
  PartialRedraw.AReadOutOverItsFaceAndABarThatOnlyFillsLeaveWhatTheyPaintedBefore
  LiveIds.AHiddenFaceKeepsItsRegion
  LiveIds.TheFillOfAFaceStaysTheMeters
  PartialRedraw.ASweep*
  PartialRedraw.AfterADrawOntoAnotherDeviceContextTheOldNeedleStays
  PartialRedraw.TheClockMovesItsHandsFromSecondToSecond
  Redraw.AChangedColorOfADialsFaceShowsAtTheNextFullDraw
  Redraw.ADialThatFillsOnlyLeavesANeedleInTheColorOfItsFace
  Redraw.ADrawOfTheSameValueOntoAnotherDeviceContextDoesNot
  Redraw.ADrawOntoAnotherDeviceContextSpoilsTheNextPartialRedrawOfTheFirst
  Redraw.AMeterInAHiddenStatusIsPaintedByAPartialRedraw
  Redraw.TheDigitsOfAReadOutLieOverThoseOfBefore
  Rotation.BeginsAtZeroWithEveryOpen
  Rotation.GoesFromEveryAngleToEveryOther
  Rotation.TurnsEveryPixelCounterClockwiseByWholeQuarters)

# They compare the pixels that updates leave of figures, texts and half-tones with those of a full draw, or find
# them the same under other colours of the device context, which a figure's text here has.
list(APPEND QEL_HOST_LEFT_OUT
  PixelScale.BarsAreThePlainOnesEnlarged
  PixelScale.KeptDistancesAndThePressedShiftAreEnlarged
  PixelScale.OutlinesAreNearThePlainOnesEnlarged
  PixelScale.RectanglesAreThePlainOnesEnlarged
  PixelScale.StraightScalesAreThePlainOnesEnlarged
  PixelScale.UprightLinesOfOnePixelAreThePlainOnesEnlarged
  RenderBitmap.OverAnyGroundItIsADrawOntoThat
  RenderBitmap.TakesTheFaceThatTheHostNames
  RenderBitmap.WhatIsNotPaintedIsTransparentAndWhatIsPaintedIsNot
  Smooth.ADrawReachesAllOfAnotherDrawing
  Smooth.ADrawReachesWhatHasMovedOutOfThePictureOfTheLast
  Smooth.AWidePenIsAllThereBesideASmallPicture
  Smooth.AllPartsOfALargePictureAreOfOneDraw
  Smooth.FilledFiguresCoverEachPixelByTheirArea
  Smooth.HatchesAndGradientsAreAsWithout
  Smooth.LinesAtAllAnglesCoverEachPixelByTheirArea
  Smooth.OutlinesOfSectorsAreAsWideAsThePenOfTheContext
  Smooth.OutlinesOfPolygonsCoverEachPixelByTheirArea
  Smooth.RingsCoverEachPixelByTheirArea
  Smooth.UprightLinesOfAllWidthsAreAsWithoutAtAllScales
  Smooth.UprightPartsOfASlantedLineAreAsWithout
  Smooth.PixelsThatNothingCoversAreNotTouched
  Smooth.UpdatesMakeWhatFullDrawsMake
  Smooth.WhatStandsUprightIsAsWithout
  Update.AQualityIsAHalfToneOverAllThatTheElementMayPaint
  Update.NoMeterScaleOrRegionGoesByTheColorsThatOthersLeave)

# They draw on a device context that is none, or count the system's own objects.
list(APPEND QEL_HOST_LEFT_OUT
  Errors.OfUpdatesOntoNoContext
  Hostile.ADrawOnNoDeviceContextIsBorne
  Types/LiveMeter.TwentyThousandUpdatesAndDrawsLeaveNoObjectBehind/*)
