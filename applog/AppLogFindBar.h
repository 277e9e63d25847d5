// The find bar below the lines of the log.
#pragma once

#include <QWidget>

#include <functional>

class CKvBitmapButton;
class QLabel;
class QLineEdit;
class QToolButton;

namespace kv {

/// What the bar tells the list.
struct AppLogFindHooks
{
    std::function<void()> changed;      ///< the text or the case
    std::function<void(int step)> next; ///< 1 the next match, -1 the one before
    std::function<void()> closed;
};

class AppLogFindBar : public QWidget
{
public:
    AppLogFindBar(QWidget* list, AppLogFindHooks hooks);

    std::wstring Text() const;
    bool MatchCase() const;
    void FocusText();
    /// @param place from 1; 0 tells how many there are alone.
    void ShowCount(int place, int count);
    void LoadSkin();
    /// The list's: below a style sheet the toolkit hands no font on.
    void TakeFont(const QFont& font);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    CKvBitmapButton* AddButton(const wchar_t* image, std::uint32_t text, std::function<void()> pressed);

    AppLogFindHooks m_hooks;
    QLineEdit* m_text;
    QToolButton* m_case;
    QLabel* m_count;
    CKvBitmapButton* m_previous = nullptr;
    CKvBitmapButton* m_next = nullptr;
    CKvBitmapButton* m_close = nullptr;
};

} // namespace kv
