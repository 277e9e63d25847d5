// The colours of the title: what is coloured, how, and the panel that edits the colour.
#pragma once

#include "edit/ColourSelection.h"

#include <QWidget>

#include <memory>
#include <optional>

class CKvColorPanel;
class KvMessageSink;

namespace titler {

class Document;
class OutlineInspector;
class PaintInspector;
class ShadowInspector;
class Switch;

/// The panel always shows the document's selected colour and edits it live; each run of its messages is one
/// step of undo. It is disabled while nothing is selected that has a colour.
class ColourInspector : public QWidget
{
    Q_OBJECT

public:
    /// @param hsb the mode in which the panel begins.
    ColourInspector(Document& document, bool hsb);
    ~ColourInspector() override;

    /// Whether the panel edits hue, saturation and brightness.
    bool IsHsb() const;

private:
    /// From the panel's begin to its end.
    struct Gesture
    {
        ColourSelection selection = {}; ///< what it is about
        DWORD first = 0;
        int continues = 0;
        bool isOneShot = false;

        void Count(int phase, DWORD colour);
    };
    void BuildPanel(bool hsb);
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnPanelNotify(int phase, DWORD colour);
    bool IsStep() const;
    void ShowProject();
    void ShowColour();

    Document& m_document;
    Switch* m_target; ///< in the order of ColourTarget
    PaintInspector* m_paint;
    OutlineInspector* m_outline;
    ShadowInspector* m_shadow;
    CKvColorPanel* m_panel;
    int m_run = 0; ///< of the panel's own edits
    Gesture m_gesture;
    // Dies before the panel, so that no message finds half an inspector.
    std::unique_ptr<KvMessageSink> m_messages;
};

} // namespace titler
