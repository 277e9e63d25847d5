// kvgroup as its users meet it: as a process.
#pragma once

#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

struct Outcome
{
    int status;
    std::string out;
    std::string error;
};

/// Runs kvgroup with a folder's files "in", "out" and "err" as its streams, in that folder. @param arguments
/// in UTF-8, or of whatever bytes the system takes. @return its exit status.
int RunKvGroup(const std::filesystem::path& folder, const std::vector<std::string>& arguments);

class KvGroup : public testing::Test
{
protected:
    KvGroup() { std::filesystem::create_directory(m_folder / "media"); }

    void Write(const std::string& name, const std::string& bytes) const { m_folder.Put(name, bytes); }
    void Media(const std::vector<std::string>& names) const
    {
        for (const std::string& name : names)
            Write("media/" + name, "");
    }
    /// Runs kvgroup in the test's folder, with `input` on standard input.
    Outcome Run(const std::vector<std::string>& arguments, const std::string& input = "") const
    {
        Write("in", input);
        const int status = RunKvGroup(m_folder.Path(), arguments);
        return {status, m_folder.Get("out"), m_folder.Get("err")};
    }

    const kv::TemporaryFolder m_folder;
};
