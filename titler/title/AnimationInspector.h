// The title's animatable properties: for each one its value at the current time, its keys and its ease.
#pragma once

#include "KvPlatform.h"
#include "edit/EaseOperator.h"
#include "project/Animation.h"

#include <QWidget>

#include <array>
#include <memory>
#include <optional>

class CKvKeyFrameCtrl;
class QDoubleSpinBox;
class QGridLayout;
class QToolButton;

namespace titler {

class CanvasView;
class Document;
class Transport;

/// A value that is edited while its property is animated becomes the key at the current frame. Every edit
/// pauses playback.
class AnimationInspector : public QWidget
{
    Q_OBJECT

public:
    /// @param canvas where an ease is tried out.
    AnimationInspector(Document& document, Transport& transport, const CanvasView& canvas);
    ~AnimationInspector() override;

    /// Shapes the ease at the current time in the ease dialog; returns when it is closed. At a key the time
    /// goes to the middle of the segment; Cancel brings it back.
    void OpenEaseDialog(Property property);

signals:
    /// An edit that cannot be, and why.
    void Refused(const QString& why);

private:
    struct Row
    {
        QDoubleSpinBox* value;
        CKvKeyFrameCtrl* strip;
        QToolButton* ease;
    };

    void BuildRow(Property property, QGridLayout& grid);
    void BuildValue(Property property);
    void BuildStrip(Property property);
    void BuildEase(Property property);
    std::optional<LRESULT> OnMessage(UINT message, LPARAM lParam);
    void OnStripClicked(Property property, UINT code);
    void SetValue(Property property, double value);
    void ToggleKey(Property property);
    bool HasRoom(Property property);
    void GoTo(const std::optional<int>& frame);
    void GoIntoSegment(Property property);
    void OnFrameChanged(int frame);
    void ShowProject();
    void ShowRow(Property property);
    Row& RowOf(Property property) { return m_rows[static_cast<std::size_t>(property)]; }

    Document& m_document;
    Transport& m_transport;
    const CanvasView& m_canvas;
    EaseOperator m_operator;
    std::array<Row, kProperties> m_rows{};
    int m_frame; ///< that the fields show and edit
    int m_editedFrame = -1;
    // Dies before the strips, so that no message finds half an inspector.
    std::unique_ptr<KvMessageSink> m_messages;
};

} // namespace titler
