#pragma once

namespace tobbin {

// Keeps a flag set for as long as it lives.
class RaisedFlag {
 public:
    explicit RaisedFlag(bool& flag) : m_flag(flag) { m_flag = true; }
    ~RaisedFlag() { m_flag = false; }
    RaisedFlag(const RaisedFlag&) = delete;
    RaisedFlag& operator=(const RaisedFlag&) = delete;

 private:
    bool& m_flag;
};

}  // namespace tobbin
