// The texts that the user sees, by their numbers in the library's string table, so that a string file can
// replace every one of them.
#pragma once

#include "KvTypes.h"

#include <QString>

#include <initializer_list>

namespace titler {

enum TextId : UINT
{
    kTextTitler = 21001,

    // Menus and their tool tips: a tip's number is its item's plus 1.
    kTextFileMenu = 21010,
    kTextEditMenu = 21011,
    kTextViewMenu = 21012,
    kTextProjectMenu = 21013,
    kTextHelpMenu = 21014,
    kTextNew = 21020,
    kTextOpen = 21022,
    kTextSave = 21024,
    kTextSaveAs = 21026,
    kTextExportFrame = 21028,
    kTextOpenMedia = 21030,
    kTextQuit = 21032,
    kTextUndo = 21034,
    kTextRedo = 21036,
    kTextSafeAreas = 21038,
    kTextFit = 21040,
    kTextFullSize = 21042,
    kTextZoomIn = 21044,
    kTextZoomOut = 21046,
    kTextAbout = 21048,
    kTextFormatTip = 21050,
    kTextUndoNamed = 21051,
    kTextRedoNamed = 21052,

    // Steps of undo.
    kStepGradient = 21100,
    kStepColour = 21101,
    kStepPosition = 21102,
    kStepAngle = 21103,
    kStepText = 21105,
    kStepFont = 21106,
    kStepFontSize = 21107,
    kStepStyle = 21108,
    kStepAlign = 21109,
    kStepFormat = 21110,

    // Inspector: a tip's number is its field's plus 1.
    kTextInspector = 21200,
    kTextGradient = 21201,
    kTextGradientTip = 21202,
    kTextColour = 21203,
    kTextColourTip = 21204,
    kTextSwatch = 21205,
    kTextSwatchTip = 21206,
    kTextOpacity = 21207,
    kTextOpacityTip = 21208,
    kTextPosition = 21209,
    kTextPositionTip = 21210,
    kTextAngle = 21211,
    kTextAngleTip = 21212,
    kTextText = 21215,
    kTextTextTip = 21216,
    kTextFont = 21217,
    kTextFontTip = 21218,
    kTextSize = 21219,
    kTextSizeTip = 21220,
    kTextBold = 21221,
    kTextBoldTip = 21222,
    kTextItalic = 21223,
    kTextItalicTip = 21224,
    kTextLeft = 21225,
    kTextLeftTip = 21226,
    kTextCentre = 21227,
    kTextCentreTip = 21228,
    kTextRight = 21229,
    kTextRightTip = 21230,
    kTextChooseColour = 21231,
    kTextStopOfMany = 21232,
    kTextPercent = 21233,
    kTextDegrees = 21234,
    kTextStyle = 21235,
    kTextStyleTip = 21236,

    // Canvas and status line.
    kTextCanvas = 21300,
    kTextCanvasTip = 21301,
    kTextZoom = 21302,
    kTextZoomTip = 21303,
    kTextVideoFormatTip = 21304,
    kTextAudioFormatTip = 21305,

    // Media panel.
    kTextMedia = 21400,
    kTextMediaList = 21401,
    kTextMediaFilter = 21402,
    kTextMediaFilterTip = 21403,
    kTextMediaOpen = 21404,
    kTextMediaOpenTip = 21405,
    kTextMediaNoFolder = 21406,
    kTextMediaEmptyFolder = 21407,
    kTextMediaNoMatch = 21408,
    kTextMediaScanning = 21409,
    kTextMediaSummary = 21410,
    kTextMediaUnreadable = 21411,
    kTextMediaChooseFolder = 21412,
    kTextMediaClipTip = 21413,

    // Files and messages.
    kTextProjectFiles = 21500,
    kTextPngFiles = 21501,
    kTextUntitled = 21502,
    kTextWindowTitle = 21503,
    kTextSaveChanges = 21504,
    kTextSaved = 21505,
    kTextOpened = 21506,
    kTextExported = 21507,
    kTextCannotSave = 21508,
    kTextCannotExport = 21509,
    kTextCannotOpen = 21510,
    kTextFileTooLarge = 21511,
    kTextBadJson = 21512,
    kTextNewerVersion = 21513,
    kTextBadField = 21514,
    kTextWholeFile = 21515,
    kTextMissing = 21516,
    kTextAboutText = 21517,
    kTextFrameTooLarge = 21518,
    kTextNewTitle = 21519,
    kTextNoFile = 21520,
    kTextEmptyFile = 21521,
    kTextFoundElements = 21522,
    kTextFoundCharacters = 21523,

    // What a field of a project file should have held.
    kTextWantExactList = 21530,
    kTextWantObject = 21600,
    kTextWantList = 21601,
    kTextWantText = 21602,
    kTextWantColour = 21603,
    kTextWantFlag = 21604,
    kTextWantNumber = 21605,
    kTextWantWhole = 21606,
    kTextWantName = 21607,

    // Command line.
    kTextUsage = 21700,
    kTextOptionProject = 21701,
    kTextOptionMedia = 21702,
    kTextOptionScreenshot = 21703,
    kTextOptionExport = 21704,
    kTextOptionSize = 21705,
    kTextOptionHelp = 21706,
    kTextBadSize = 21707,
    kTextTooManyProjects = 21708,
    kTextNoDisplay = 21709,
    kTextNoSuchFolder = 21710,
    kTextEmptyValue = 21711,
    kTextNotPng = 21712,
    kTextNoProjectName = 21713,
    kTextMediaUnfinished = 21714,

    // Animation. A property has three texts: its label, the label's tip, and its name within a sentence.
    kTextAnimation = 21800,
    kTextPropertyX = 21801,
    kTextPropertyY = 21804,
    kTextPropertyScale = 21807,
    kTextPropertyRotation = 21810,
    kTextPropertyOpacity = 21813,
    kTextPropertyOffset = 21816,
    kTextEase = 21820,
    kTextEaseTip = 21821,
    kTextNoEaseTip = 21822,
    kTextKeys = 21823,

    // Time; a tip's number is its item's plus 1.
    kTextPlaybackMenu = 21830,
    kTextToStart = 21831,
    kTextStepBack = 21833,
    kTextPlay = 21835,
    kTextPause = 21837,
    kTextStepForward = 21839,
    kTextToEnd = 21841,
    kTextLoop = 21843,
    kTextPreviousKey = 21845,
    kTextNextKey = 21847,
    kTextTime = 21849,
    kTextDuration = 21851,
    kTextTimeRuler = 21853,
    kTextTimeRulerTip = 21854,
    kTextKeyTip = 21855,
    kTextNoKeys = 21856,
    kTextExportFrames = 21857,
    kTextOptionPlay = 21860,

    // Steps of undo.
    kStepValue = 21870,
    kStepAnimate = 21871,
    kStepStopAnimating = 21872,
    kStepAddKey = 21873,
    kStepRemoveKey = 21874,
    kStepMoveKey = 21875,
    kStepEase = 21876,
    kStepDuration = 21877,
};

/// The text with that number.
QString Text(UINT id);
/// The text with "%1", "%2" … replaced by `values`; a value is never read as a pattern itself.
QString Text(UINT id, std::initializer_list<QString> values);

} // namespace titler
