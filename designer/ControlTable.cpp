#include "designer/ControlTable.h"

#include "KvGuiAdvCtrls.h"

namespace kv {

namespace {

template <typename Control>
QWidget* Make(QWidget* parent)
{
    return new Control(parent);
}

QString ObjectName(const DesignerControl& control)
{
    QString name = QString::fromLatin1(control.name).mid(3); // without "CKv"
    name[0] = name[0].toLower();
    return name;
}

QString PlainTexts(const DesignerControl& control)
{
    QString specifications;
    for (const QString& name : QString::fromLatin1(control.plainTexts).split(u' ', Qt::SkipEmptyParts)) {
        specifications +=
            QStringLiteral("<stringpropertyspecification name=\"%1\" notr=\"true\" type=\"singleline\"/>")
                .arg(name);
    }
    return specifications;
}

} // namespace

const std::vector<DesignerControl>& DesignerControls()
{
    static const std::vector<DesignerControl> controls = {
        {"CKvGradientCtrl",
         "KvGradientCtrl.h",
         "Gradient",
         {320, 64},
         "A gradient of up to 255 stops",
         "The user adds, moves, colours and removes the stops of a gradient and the mid points between them. "
         "Connect StopsEdited and StopSelected; give the selected stop its colour by SetColor, for example "
         "from "
         "a colour panel.",
         R"(<property name="stops"><string notr="true">0 #2a1b5e; 1 #ffb347</string></property>)",
         "stops",
         Make<CKvGradientCtrl>},
        {"CKvQuadGradCtrl",
         "KvQuadGradCtrl.h",
         "Four-Corner Gradient",
         {160, 160},
         "Four colours that blend, one a corner",
         "The user selects a corner, exchanges and turns corners, and pastes or drops colours. Connect "
         "CornerSelected and CornersChanged; give the selected corner its colour by SetColor.",
         "",
         "",
         Make<CKvQuadGradCtrl>},
        {"CKvColorPanel",
         "KvColorPanel.h",
         "Colour Panel",
         {320, 240},
         "One colour by map, numbers and swatches",
         "Edits one colour in RGB or HSB, with alpha. Connect ColorEdited. Call "
         "CKvSolidColorTemplate::InstallFactoryTemplate once before, or the swatches are empty.",
         "",
         "",
         Make<CKvColorPanel>},
        {"CKvColorMapWnd",
         "KvColorMapWnd.h",
         "Colour Map",
         {128, 128},
         "A field or slider of colour channels",
         "A picture on which the user picks a colour: a field of two channels, or a slider of one or of "
         "alpha, "
         "as the property \"map\" says. Connect ColorEdited.",
         "",
         "",
         Make<CKvColorMapWnd>},
        {"CKvSolidColorTemplate",
         "KvSolidColorTemplate.h",
         "Swatch Grid",
         {96, 176},
         "Preset colours that all grids share",
         "The user picks a colour or one of four alpha values, and keeps colours of their own. Connect "
         "CellPicked. "
         "Call CKvSolidColorTemplate::InstallFactoryTemplate once before, or there are no swatches.",
         "",
         "",
         Make<CKvSolidColorTemplate>},
        {"CKvParamEdit",
         "KvParamEdit.h",
         "Number Edit",
         {64, 22},
         "A whole number: typed, stepped, scrubbed",
         "A number in a range. It is typed, stepped by arrows and wheel, or dragged on the border. Connect "
         "ValueEdited.",
         "",
         "",
         Make<CKvParamEdit>},
        {"CKvParamBezierWnd",
         "KvParamBezierWnd.h",
         "Ease Window",
         {320, 240},
         "The ease between two keys",
         "Shows and edits the curve of an animated value between two keys, with presets and undo. It cannot "
         "be "
         "edited until SetInfo has given it the host's curve; then connect CurveChanged.",
         "",
         "",
         Make<CKvParamBezierWnd>},
        {"CKvKeyFrameCtrl",
         "KvKeyFrameCtrl.h",
         "Keyframe Strip",
         {56, 14},
         "Animation on or off, keys before and behind",
         "Four small buttons beside a value that can be animated. Connect KeyFrameClicked, AnimatedEdited "
         "and "
         "KeyEdited; tell it by the properties whether there is a key at the current time.",
         "",
         "",
         Make<CKvKeyFrameCtrl>},
        {"CKvLayoutSelector",
         "KvLayoutSelector.h",
         "Layout Strip",
         {480, 96},
         "A row or column of thumbnails",
         "The user picks a layout by its thumbnail. It is empty and disabled until SetData has given it the "
         "layouts; then connect LayoutPicked.",
         "",
         "",
         Make<CKvLayoutSelector>},
        {"CKvAppLogListCtrl",
         "KvAppLogListCtrl.h",
         "Log List",
         {480, 200},
         "The application's log",
         "Messages in colours by type, with filters and search; they may be posted from any thread. Add them "
         "by "
         "AddAppLogText or PostAppLogText, or take in Qt's own by KvQtMessageLog.",
         "",
         "",
         Make<CKvAppLogListCtrl>},
        {"CKvSubTitleTxtListEditor",
         "KvSubTitleTxtListEditor.h",
         "Subtitle List",
         {480, 200},
         "Texts with in and out time codes",
         "The user edits texts, time codes and templates, with undo. Add rows by InserItem, or view and fill "
         "it by "
         "KvSubTitleModel; connect TextEdited, TimeCodeEdited and RowsEdited.",
         "",
         "",
         Make<CKvSubTitleTxtListEditor>},
        {"CKvTextEditListCtrl",
         "KvTextEditListCtrl.h",
         "Text List",
         {320, 200},
         "Lines of text, edited in place",
         "The user edits, moves, copies and drags lines, with undo. Connect TextsEdited, or TextEdited and "
         "RowsEdited.",
         "",
         "",
         Make<CKvTextEditListCtrl>},
        {"CKvCharMapPreviewWnd",
         "KvCharMapDlg.h",
         "Character Grid",
         {504, 264},
         "The characters that a font face has",
         "A grid of the characters of one font family, as the property \"face\" names it. Connect "
         "CharSelected "
         "and CharPicked; for a scroll bar beside it, connect Scrolled and call SetFirst.",
         "",
         "face",
         Make<CKvCharMapPreviewWnd>},
        {"CKvScrollBar",
         "KvScroll.h",
         "Scroll Bar",
         {200, 17},
         "A scroll bar for long views",
         "A scroll bar in 64 bits. How far a line or a page goes is the host's to say: connect "
         "ScrollRequested, "
         "and set the position there.",
         R"(<property name="orientation"><enum>Qt::Horizontal</enum></property>)",
         "",
         Make<CKvScrollBar>},
        {"CKvBitmapButton",
         "KvButtons.h",
         "Picture Button",
         {28, 28},
         "A button that is a picture of the skin",
         "The property \"picture\" names a picture of the skin, with states of its own where the skin has "
         "them. "
         "Connect clicked.",
         R"(<property name="picture"><string notr="true">nextkey</string></property>)",
         "picture backgroundKey",
         Make<CKvBitmapButton>},
        {"CKvButton",
         "KvButtons.h",
         "Picture and Text Button",
         {96, 28},
         "A picture of the skin with a text",
         "As the picture button, with a text beside it. Connect clicked.",
         R"(<property name="text"><string>Button</string></property>)",
         "picture backgroundKey",
         Make<CKvButton>},
        {"CKvRadioBitmapButton",
         "KvButtons.h",
         "Radio Picture Button",
         {28, 28},
         "A picture button that is on or off",
         "One of a group that the host keeps: a click changes nothing by itself. Connect clicked, and call "
         "SetCheck there.",
         R"(<property name="uncheckedPicture"><string notr="true">opkey_uck</string></property>)"
         R"(<property name="checkedPicture"><string notr="true">opkey_chk</string></property>)",
         "uncheckedPicture checkedPicture backgroundKey",
         Make<CKvRadioBitmapButton>},
        {"CKvRibbonTitlebar",
         "KvRibbonTitlebar.h",
         "Ribbon Title Bar",
         {640, 96},
         "A caption with tabs for several applications",
         "Stands in for the caption of a CKvFrameWnd. Title bars and tabs are added by BeginAddTitleBar, "
         "AddRibbonItem and EndAddTitleBar; connect RibbonItemSelected.",
         "",
         "",
         Make<CKvRibbonTitlebar>},
        {"CKvRibbonMenuBar",
         "KvRibbonMenuBar.h",
         "Ribbon Menu Bar",
         {640, 96},
         "A caption with menus",
         "Stands in for the caption of a CKvFrameWnd. Menu bars are added by BeginAddMenuBar and "
         "EndAddMenuBar; "
         "chosen commands reach the host's IKvRibbonMenuBarSmartMenu.",
         "",
         "",
         Make<CKvRibbonMenuBar>},
    };
    return controls;
}

QString DesignerForm(const DesignerControl& control)
{
    return QStringLiteral(
               "<ui language=\"c++\" displayname=\"%1\">"
               "<widget class=\"%2\" name=\"%3\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
               "<width>%4</width><height>%5</height></rect></property>%6</widget>"
               "<customwidgets><customwidget><class>%2</class>"
               "<propertyspecifications>%7</propertyspecifications></customwidget></customwidgets></ui>")
        .arg(QString::fromLatin1(control.label), QString::fromLatin1(control.name), ObjectName(control))
        .arg(control.size.width())
        .arg(control.size.height())
        .arg(QString::fromLatin1(control.properties), PlainTexts(control));
}

} // namespace kv
