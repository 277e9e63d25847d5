// How the text or the background is coloured: the kind, and the control of that kind.
#pragma once

#include <QWidget>

class CKvQuadGradCtrl;

namespace titler {

class Document;
class GradientInspector;
class Switch;

/// Shows the paint of the selected target, and nothing new while that has none. A corner that is selected in
/// the four-corner control is the document's selected colour.
class PaintInspector : public QWidget
{
    Q_OBJECT

public:
    explicit PaintInspector(Document& document);

private:
    void BuildCorners();
    void ChooseKind(int kind);
    void TakeCorners();
    void ShowProject();

    Document& m_document;
    Switch* m_kind; ///< in the order of PaintKind
    GradientInspector* m_gradient;
    CKvQuadGradCtrl* m_corners;
};

} // namespace titler
