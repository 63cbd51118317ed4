#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <sys/wait.h>

// The tool as its users meet it: a program, its files, its lines and its status.

namespace nr_test
{

namespace fs = std::filesystem;

struct run_t
{
    int status = 0;
    std::string out;
    std::string err;
};

inline std::string content_of(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

inline std::size_t lines_of(const std::string& text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

class program_test_t : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "nrwave-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
    }
    void TearDown() override { fs::remove_all(m_folder); }

    run_t run(const std::string& arguments) const { return shell("nrwave " + arguments); }

    run_t shell(const std::string& line) const
    {
        const fs::path out = m_folder / ".out";
        const fs::path err = m_folder / ".err";
        const std::string command = "cd '" + m_folder.string() + "' && PATH='" +
                                    fs::path(NRWAVE_PROGRAM).parent_path().string() + "':$PATH && { " + line +
                                    "\n} >'" + out.string() + "' 2>'" + err.string() + "'";
        run_t result;
        const int status = std::system(command.c_str());
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 255;
        result.out = content_of(out);
        result.err = content_of(err);
        fs::remove(out);
        fs::remove(err);
        return result;
    }

    void write(const std::string& name, const std::string& text) const
    {
        fs::create_directories((m_folder / name).parent_path());
        std::ofstream(m_folder / name, std::ios::binary) << text;
    }

    std::set<std::string> files() const
    {
        std::set<std::string> names;
        for (const auto& file : fs::directory_iterator(m_folder))
            names.insert(file.path().filename().string());
        return names;
    }

    std::string content(const std::string& name) const { return content_of(m_folder / name); }

    fs::path m_folder;
};

inline const std::string k_small =
    "--set carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_10M --set carrier[0].dl_ssb.enable=1 ";

} // namespace nr_test
