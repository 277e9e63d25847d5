// Which encoding a file has: the user sees what its first lines would be.
#pragma once

#include <QByteArray>
#include <QDialog>

#include <string_view>

class QListWidget;
class QPlainTextEdit;

namespace titler {

class EncodingDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param bytes of the file; only the begin is kept. The likeliest encoding is chosen at first.
    EncodingDialog(std::string_view bytes, QWidget* parent);

    /// The name of the chosen one, as converters have it.
    QString Encoding() const;

private:
    void ShowPreview();

    QByteArray m_begin;
    QListWidget* m_names;
    QPlainTextEdit* m_preview;
};

} // namespace titler
