// What forms set of each control: every property beside the toolkit's own, with a value other than its first
// one.
#pragma once

struct PropertyValue
{
    const char* control;
    const char* property;
    const char* value; ///< as text
    const char* other; ///< another one
};

// In the order in which a form sets them.
inline constexpr PropertyValue kPropertyValues[] = {
    {"CKvAppLogListCtrl", "gridLines", "false", "true"},
    {"CKvAppLogListCtrl", "maximumLines", "120", "7"},
    {"CKvAppLogListCtrl", "followMode", "FollowAtEnd", "FollowAlways"},
    {"CKvAppLogListCtrl", "typeFilter", "12", "1023"},
    {"CKvBitmapButton", "picture", "titler_tool_save", "prekey"},
    {"CKvBitmapButton", "backgroundKey", "keButtonHoverColor", ""},
    {"CKvButton", "text", "Render", "Save"},
    {"CKvButton", "picture", "titler_tool_save", "prekey"},
    {"CKvButton", "backgroundKey", "keWindowBKColor", ""},
    {"CKvCharMapPreviewWnd", "face", "DejaVu Sans", ""},
    {"CKvColorMapWnd", "map", "SliderHue", "AlphaSlider"},
    {"CKvColorMapWnd", "color", "#80306090", "#102030"},
    {"CKvColorPanel", "hsbMode", "true", "false"},
    {"CKvColorPanel", "color", "#80306090", "#102030"},
    {"CKvColorPanel", "editablePart", "ColourOnly", "AlphaOnly"},
    {"CKvGradientCtrl", "stops", "0 #ff2a1b5e; 0.25 #80ffffff 0.3; 1 #ffffb347", "0 #ff000000; 1 #ffffffff"},
    {"CKvGradientCtrl", "selectedStop", "1", "0"},
    {"CKvGradientCtrl", "editing", "true", "false"},
    {"CKvKeyFrameCtrl", "vertical", "true", "false"},
    {"CKvKeyFrameCtrl", "animated", "true", "false"},
    {"CKvKeyFrameCtrl", "hasKey", "false", "true"},
    {"CKvKeyFrameCtrl", "previousEnabled", "false", "true"},
    {"CKvKeyFrameCtrl", "nextEnabled", "false", "true"},
    {"CKvLayoutSelector", "vertical", "true", "false"},
    {"CKvLayoutSelector", "selectionShown", "true", "false"},
    {"CKvLayoutSelector", "firstNumber", "10", "0"},
    {"CKvParamBezierWnd", "frameLength", "0.04", "0"},
    {"CKvParamBezierWnd", "speedShown", "true", "false"},
    {"CKvParamBezierWnd", "initialCurveShown", "true", "false"},
    {"CKvParamEdit", "minimum", "-400", "-10"},
    {"CKvParamEdit", "maximum", "400", "10"},
    {"CKvParamEdit", "step", "5", "1"},
    {"CKvParamEdit", "value", "-20", "3"},
    {"CKvParamEdit", "label", "Angle", "Width"},
    {"CKvQuadGradCtrl", "topLeft", "#2a1b5e", "#ff0202"},
    {"CKvQuadGradCtrl", "topRight", "#80c2487a", "#ff0302"},
    {"CKvQuadGradCtrl", "bottomLeft", "#ffb347", "#ff0402"},
    {"CKvQuadGradCtrl", "bottomRight", "#3f7f9f", "#ff0502"},
    {"CKvQuadGradCtrl", "selectedCorner", "2", "1"},
    {"CKvRadioBitmapButton", "backgroundKey", "keWindowBKColor", ""},
    {"CKvRadioBitmapButton", "uncheckedPicture", "opkey_uck", "RGB_R_UnCheck"},
    {"CKvRadioBitmapButton", "checkedPicture", "opkey_chk", "RGB_R_Check"},
    {"CKvRadioBitmapButton", "checked", "true", "false"},
    {"CKvRibbonMenuBar", "windowButtonsShown", "false", "true"},
    {"CKvRibbonMenuBar", "menuButtonShown", "true", "false"},
    {"CKvRibbonTitlebar", "windowButtons", "CloseButton", "NoButtons"},
    {"CKvScrollBar", "scrollRange", "5000000000", "100"},
    {"CKvScrollBar", "viewLength", "400", "50"},
    {"CKvScrollBar", "scrollPos", "4000000000", "60"},
    {"CKvSolidColorTemplate", "columns", "4", "5"},
    {"CKvSolidColorTemplate", "rows", "5", "4"},
    {"CKvSubTitleTxtListEditor", "gridLines", "false", "true"},
    {"CKvSubTitleTxtListEditor", "frameRate", "Rate29_97", "Rate60"},
    {"CKvSubTitleTxtListEditor", "dropFrame", "true", "false"},
    {"CKvSubTitleTxtListEditor", "timecodeOffset", "107892", "0"},
    {"CKvSubTitleTxtListEditor", "followPlayback", "true", "false"},
    {"CKvTextEditListCtrl", "gridLines", "false", "true"},
    {"CKvTextEditListCtrl", "texts", "Harbour", "Lighthouse"},
};
