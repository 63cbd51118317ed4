#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nrwave
{

/// A run of this program in a process of its own.
struct job_t
{
    /// Behind the program's name.
    std::vector<std::string> words;

    double seconds = 0.0;
    /// As a shell gives it: 128 and the signal's number where one ended the process.
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs jobs, at most `together` at a time, and tells each as it ends. They have nothing to read, and what they print
/// is kept. A signal that asks this program to end, or its death by any other, ends them first.
void run_jobs(std::vector<job_t>& jobs, unsigned int together, const std::function<void(job_t&)>& on_end);

} // namespace nrwave
