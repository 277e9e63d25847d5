// Every control in a window, with data, for random input.
#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <random>
#include <vector>

using Random = std::mt19937;

/// Below `limit`, which is at least 1.
inline int Below(Random& random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

/// A control, what it works on, and a host that changes its data.
class Subject
{
public:
    virtual ~Subject() = default;
    virtual QWidget& Control() = 0;
    /// What a host does between two events.
    virtual void Change(Random& random) = 0;
};

struct SubjectMaker
{
    const char* name;
    std::function<std::unique_ptr<Subject>(QWidget& parent)> make;
};
const std::vector<SubjectMaker>& AllSubjects();
