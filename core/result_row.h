#pragma once
#include <cstdint>
#include <string>

namespace bromvale {

// A found fault: the texts that the list shows, that its undo record holds and that name the key to be
// removed. How they are spelled depends on the check (scanner/fault_texts.h); nobody changes them on the way.
struct ResultRow {
    std::string keyLine;  // "[", hive's name, key, "]"
    std::string valueName;
    std::string valueData;
    std::int32_t hive = 0;
};

// Takes the rows that the checks find.
class RowSink {
  public:
    virtual void addRow(const ResultRow& row) = 0;
    // The last one of several alike; nothing where there is none.
    virtual void takeBackRow(const ResultRow& row) = 0;

  protected:
    ~RowSink() = default;
};

}  // namespace bromvale
