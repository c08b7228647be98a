#pragma once

#include <string>

/// A part of a host's life that tools look at: its name stands in a trace of system calls, and in
/// the counts of a profiler of instructions.
class Stretch {
public:
    explicit Stretch(const std::string& name);
    ~Stretch();
    Stretch(const Stretch&) = delete;
    Stretch& operator=(const Stretch&) = delete;

private:
    const std::string m_name;
};
