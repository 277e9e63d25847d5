// The tabs or items, the flag and the title of a caption strip as parts that a screen reader finds; its
// buttons are widgets, of which the strip knows what they open and their keys.
#pragma once

#include "chrome/CaptionStrip.h"
#include "platform/AccessibleParts.h"

#include <QTimer>

#include <vector>

namespace kv {

class CaptionKeys;

class CaptionAccess : public AccessibleParts
{
public:
    CaptionAccess(CaptionStrip& strip, CaptionKeys& keys);

    /// Compares the parts with those of the last call and tells what is different.
    void Update();
    /// Does so soon, once for many calls; costs nothing while nobody listens.
    void UpdateLater();
    /// The texts are in another language.
    void TextsChanged();

    QString ControlName() const override;
    int Count() const override;
    Key KeyAt(int index) const override;
    int IndexOf(Key key) const override;
    AccessiblePart Describe(Key key) const override;
    QString Shortcut(Key key) const override;
    AccessibleButton DescribeButton(const QWidget& button) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;

private:
    struct Seen
    {
        QString name;
        bool selected;
        bool open;
        bool disabled;
    };

    bool HasTitle() const;
    CaptionHit PartOf(Key key) const;
    QString ShortcutOf(const CaptionHit& part) const;
    Key ItemKey(int index) const;
    AccessiblePart DescribeItem(int index) const;
    std::vector<Seen> Look() const;
    void TellDifferences(const std::vector<Seen>& before);

    CaptionStrip& m_strip;
    CaptionKeys& m_keys;
    std::uint32_t m_generation = 1; ///< of the items: another application's are others
    const CaptionRecord* m_record = nullptr;
    int m_count = 0;
    QString m_title;
    std::vector<Seen> m_seen;
    QTimer m_later;
};

} // namespace kv
