// The title's text: what it says, in which font, how it is aligned.
#pragma once

#include "project/Project.h"

#include <QWidget>

class QButtonGroup;
class QDoubleSpinBox;
class QFontComboBox;
class QPlainTextEdit;
class QToolButton;

namespace titler {

class Document;

/// Where two texts differ: `removed` characters at `start` became `inserted` ones.
struct TextDifference
{
    qsizetype start;
    qsizetype removed;
    qsizetype inserted;
};
TextDifference Difference(const QString& before, const QString& after);

class TextInspector : public QWidget
{
    Q_OBJECT

public:
    explicit TextInspector(Document& document);

    /// The field of the current page's text; what is put into it goes into the project.
    QPlainTextEdit& Field() { return *m_text; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildFields();
    QToolButton* StyleButton(UINT nameId);
    void Connect();
    void OnTextEdited();
    void OnFamilyChosen();
    void ShowProject();
    QString ShownFamily() const;
    void ShowText(const QString& text);

    Document& m_document;
    QPlainTextEdit* m_text;
    int m_page = 0; ///< whose text it shows
    QFontComboBox* m_family;
    QDoubleSpinBox* m_size;
    QToolButton* m_bold;
    QToolButton* m_italic;
    QButtonGroup* m_align;
};

} // namespace titler
