#pragma once

#include "platform/Environment.h"

namespace tobbin {

// Passes the wish to stop on, but not the texts: for work behind a window whose text stands.
class SilentProgress : public Progress {
 public:
    explicit SilentProgress(const Progress& progress) : m_progress(progress) {}
    bool StopRequested() const override { return m_progress.StopRequested(); }

 private:
    const Progress& m_progress;
};

}  // namespace tobbin
