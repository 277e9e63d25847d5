// The ease dialog's way to the document: the segment at the current time of one of the title's properties.
#pragma once

#include "KvTypes.h"
#include "project/Animation.h"

#include <optional>

namespace titler {

class Document;
class Transport;

/// The object is "title", parameters are the properties' names in the project file. Times are frames, values
/// in the unit that the inspector shows. Every operation returns 0 for another object or parameter.
///
/// A segment's range has room for its two keys: half their distance on both sides, or a span around equal
/// ones, within the property's limits. A rising opacity is locked, its range is that of its keys: to fall on
/// the way to more makes no sense for a fade, and to pass 100 % shows nothing.
class EaseOperator : public IKvDataOperator
{
public:
    static constexpr const wchar_t* kObject = L"title";

    EaseOperator(Document& document, Transport& transport);

    int RegisterParam(const wchar_t* objectId, const wchar_t* paramName) override;
    int UnregisterParam(const wchar_t* objectId, const wchar_t* paramName) override;
    /// Everything up to `CommitEdit` becomes one step of undo.
    int BeginEdit(const wchar_t* objectId, const wchar_t* paramName) override;
    int CommitEdit(const wchar_t* objectId, const wchar_t* paramName) override;
    int CancelEdit(const wchar_t* objectId, const wchar_t* paramName) override;
    int GetEaseData(const wchar_t* objectId, const wchar_t* paramName, SKvParamEaseData& data) override;
    /// Sets the ease and the keys' values, within the property's limits; keys keep their frames. Only within
    /// an edit. @return 0 for what is not finite or has an unknown kind, and changes nothing then.
    int SetEaseData(const wchar_t* objectId, const wchar_t* paramName, const SKvParamEaseData& data) override;
    int CanGoPrevKey(const wchar_t* objectId, const wchar_t* paramName) override;
    int CanGoNextKey(const wchar_t* objectId, const wchar_t* paramName) override;
    /// Moves the current frame to the middle of the segment before or after.
    int GoPrevKey(const wchar_t* objectId, const wchar_t* paramName) override;
    int GoNextKey(const wchar_t* objectId, const wchar_t* paramName) override;

private:
    struct Segment
    {
        Property property;
        const Animated& animated;
        int index; ///< of the key that begins it

        const Key& Start() const { return animated.keys[index]; }
        const Key& End() const { return animated.keys[index + 1]; }
    };
    std::optional<Segment> Find(const wchar_t* objectId, const wchar_t* paramName) const;
    int Go(const wchar_t* objectId, const wchar_t* paramName, int by, bool really);

    Document& m_document;
    Transport& m_transport;
    std::optional<Property> m_edited;
    int m_run = 0;
};

} // namespace titler
