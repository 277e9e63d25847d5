/// @file
/// File naming rules: which media files belong together by their names.
///
/// A rule describes a naming convention as patterns. A pattern is literal text with labels:
///
/// - `<File>`: the base part of the name
/// - `<Number>`: a run of decimal digits
/// - `<Ext>`: the extension with its leading "."
///
/// The main rule names the file that the user selected (`<File><Ext>`), the addition rules name its siblings
/// (`<File>_A<Number><Ext>`). Typical use: load the collection, create a matcher, `Prepare` it with the
/// selected name, offer every candidate with `AddFile`, call `BuildGroups` and read each group.
///
/// Wide texts are the platform's wchar_t; limits count wchar_t's. One caller at a time; only the reference
/// counts are atomic. Memory that runs out throws std::bad_alloc, except from factories, `Clone`, load and
/// save, which have a result for it; nothing else is thrown.
#pragma once

#include "KvUnknown.h"

#include <string>

/// Buffers that receive a pattern or a derived specification hold this many characters with the terminator.
inline constexpr unsigned int kKvNamingTextSize = 128;
/// The buffer that receives a group's name holds this many characters with the terminator.
inline constexpr unsigned int kKvNamingGroupNameSize = 260;
/// Returned by the "add" operations that were given nothing to add.
inline constexpr unsigned int kKvNamingNoIndex = 0xFFFFFFFFu;

/// Rule classes in use (string table 7023 to 7025 has their display names).
enum EKvFileNamingClass : unsigned int
{
    kKvNamingClassUnknown = 0,    ///< neither; such rules are looked for by this number only
    kKvNamingClassVideoAudio = 1, ///< the main rule names the video (or combined) file
    kKvNamingClassAudio = 2,      ///< the main rule names one audio channel file
};

/// One rule: a class, a main pattern and an ordered list of addition patterns.
/// Stored patterns may have any length; the getters refuse those above 127 characters.
class IKvFileNamingRule : public IKvUnknown
{
public:
    /// @return a new rule with the same class and patterns and one reference; null when out of memory.
    virtual IKvFileNamingRule* Clone() = 0;
    /// Replaces class and patterns with those of `source`, which may be a host's own rule: a main pattern
    /// that it does not hand out is then empty.
    /// @param source may be null.
    /// @return 1; 0, nothing changed, for null or when `source` does not hand out an addition that it counts.
    virtual int CopyFrom(const IKvFileNamingRule* source) = 0;
    /// @return an EKvFileNamingClass, or a number of the host's own.
    virtual unsigned int GetClass() = 0;
    /// @param ruleClass any number. @return 1.
    virtual int SetClass(unsigned int ruleClass) = 0;
    /// Stores the main pattern. @param text null stores the empty one.
    /// @return true when it is not empty afterwards.
    virtual bool SetMainRule(const wchar_t* text) = 0;
    /// Copies the main pattern into a buffer of kKvNamingTextSize characters.
    /// @return false, buffer untouched, when the buffer is null or the pattern is empty or too long.
    /// @param buffer receives it, with the terminator.
    virtual bool GetMainRule(wchar_t* buffer) = 0;
    /// Appends an addition pattern; empty ones and duplicates are accepted.
    /// @return its index, or kKvNamingNoIndex when `text` is null. @param text the pattern.
    virtual unsigned int AddAdditionRule(const wchar_t* text) = 0;
    /// Removes an addition pattern; later ones move down.
    /// @param index 0 … count - 1. @return false when it is out of range.
    virtual bool RemoveAdditionRule(unsigned int index) = 0;
    /// Copies an addition pattern into a buffer of kKvNamingTextSize characters.
    /// @return false, buffer untouched, when the index is out of range, the buffer null or the text too long.
    /// @param index 0 … count - 1. @param buffer receives the pattern, with the terminator.
    virtual bool GetAdditionRule(unsigned int index, wchar_t* buffer) = 0;
    /// Replaces an addition pattern. @param index 0 … count - 1. @param text null stores the empty one.
    /// @return false when the index is out of range.
    virtual bool SetAdditionRule(unsigned int index, const wchar_t* text) = 0;
    /// @return how many addition patterns there are.
    virtual unsigned int GetAdditionRuleCount() = 0;
};

/// An ordered list of rules. It holds one reference on each rule in it.
class IKvFileNamingRuleCollection : public IKvUnknown
{
public:
    /// Appends a rule and adds a reference; the same rule may be added more than once.
    /// @return its index, or kKvNamingNoIndex for null. @param rule may be null.
    virtual unsigned int AddRule(IKvFileNamingRule* rule) = 0;
    /// Takes a rule out of the list; later ones move down. The list's reference is dropped without a
    /// `Release`: to destroy the rule, take it with `GetRule` first and release it twice.
    /// @return false when the index is out of range. @param index 0 … count - 1.
    virtual bool RemoveRule(unsigned int index) = 0;
    /// Hands out a rule with one added reference, which the caller releases.
    /// @return false when `out` is null or the index is out of range; `*out` is then untouched.
    /// @param index 0 … count - 1. @param out receives the rule.
    virtual bool GetRule(unsigned int index, IKvFileNamingRule** out) = 0;
    /// @return how many rules there are.
    virtual unsigned int GetRuleCount() = 0;
    /// Releases every rule in list order and empties the list. @return 1.
    virtual int RemoveAllRules() = 0;
};

/// Finds the siblings of one media file among candidates.
class IKvFileNamingMatcher : public IKvUnknown
{
public:
    /// Stores a mode that no operation reads. @param mode any number. @return 1.
    virtual int SetMode(unsigned int mode) = 0;
    /// Starts over with the selected file's name: every rule of exactly `ruleClass` whose main pattern fits
    /// `fileName` becomes a record with one entry per addition pattern.
    /// @param fileName with or without folders; those are cut off. @param ruleClass an EKvFileNamingClass.
    /// @param rules is read now and not kept.
    /// @return 1, also when no rule fits; 0 for a null name or when `rules` is null or empty.
    virtual int Prepare(const wchar_t* fileName, unsigned int ruleClass,
                        IKvFileNamingRuleCollection* rules) = 0;
    /// Offers a candidate. @param path what stands before the last `\` or `/` is cut off.
    /// @return the number of entries that it was filed under (0 also for null).
    virtual int AddFile(const wchar_t* path) = 0;
    /// Makes one group for each entry that holds a file, in record order and then entry order, each sorted
    /// by number (equal numbers in the order offered). Called again it makes the groups anew.
    /// @param groupCount receives how many there are. @return 1; 0 for null.
    virtual int BuildGroups(unsigned int* groupCount) = 0;
    /// Copies a group's name (the name given to `Prepare`) into a buffer of kKvNamingGroupNameSize
    /// characters and appends its file names to `files`; existing elements are kept.
    /// @param index 0 … the count of `BuildGroups` - 1. @param name receives the name, with the terminator.
    /// @param files receives the names as they were offered, without folders.
    /// @return 1; 0, nothing changed, when the index is out of range, an argument null or the name too long.
    virtual int GetGroup(unsigned int index, wchar_t* name, CStringArray* files) = 0;
};

/// Creates an empty rule. @param ruleClass an EKvFileNamingClass. @param out receives it, with one reference.
/// @return false when `out` is null or memory is short (`*out` null).
KV_API bool CreateFileNamingRule(unsigned int ruleClass, IKvFileNamingRule** out);
/// Creates an empty collection. @param out receives it, with one reference.
/// @return false when `out` is null or memory is short (`*out` null).
KV_API bool CreateFileNamingRuleCollection(IKvFileNamingRuleCollection** out);
/// Creates a matcher. @param out receives it, with one reference.
/// @return 0 when `out` is null or memory is short (`*out` null), else 1.
KV_API int KvCreateFileNamingMatcher(IKvFileNamingMatcher** out);

/// Loads a rule collection from a profile file; five built-in rules when the file does not exist. At most
/// 65,536 rules and 65,536 addition patterns are loaded, each pattern cut at 259 characters.
/// @param file its path. @param out receives the collection, with one reference.
/// @param reserved neither read nor written.
/// @return 1, also for a broken file (what can be read is loaded) and for one that exists but cannot be read
///         (the collection is empty); 0 when an argument is null or memory is short (`*out` null).
KV_API int KvLoadFileNamingCollection(const wchar_t* file, IKvFileNamingRuleCollection** out,
                                      unsigned int* reserved);
/// Saves a rule collection: read once, written once, atomically. Keys, sections and comments that are not
/// the collection's own survive, also the sections of rules that an earlier, longer save left.
/// Patterns of rules made by CreateFileNamingRule are saved in full, whatever their length; of a host's own
/// rule, a main pattern that it does not hand out is saved as the empty one.
/// @param file its path. @param collection what is saved. @param reserved neither read nor written.
/// @return 1; 0, with the old file whole, when an argument is null, a pattern holds a line break (or what is
///         no character), a host's rule does not hand out an addition that it counts, the collection has more
///         rules or addition patterns than are loaded, or the file cannot be read or written.
KV_API int KvSaveFileNamingCollection(const wchar_t* file, IKvFileNamingRuleCollection* collection,
                                      unsigned int* reserved);

/// Says what is wrong with a pattern, as an editor of rules accepts it: it is empty (string 7016), holds a
/// character that a file name may not hold (7018), or a label that stands there twice (7022) or does not
/// exist (7021). Shows nothing.
/// @param pattern null counts as empty. @param fault the first fault; empty for a sound pattern.
/// @return true for a sound pattern.
KV_API bool KvCheckRule(const wchar_t* pattern, std::wstring& fault);

/// Whether a name ends in a usual video extension: of names that belong together such a one is the clip's.
/// @param name in any case of letters; null is none. @return true when it does.
KV_API bool KvHasVideoExtension(const wchar_t* name);

/// Checks a pattern's labels and shows the first fault in a message box (string 7021 or 7022).
/// @param pattern may be null. @return true for a sound, an empty or a null pattern.
KV_API bool CheckRuleLabels(const wchar_t* pattern);
