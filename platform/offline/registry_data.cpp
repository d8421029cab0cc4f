#include "platform/offline/registry_data.h"

#include "platform/offline/code_page.h"

namespace bromvale::offline {

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

AnsiData::AnsiData(const RegistryValueNode& value) : view_(value.data()) {}

WideData::WideData(const RegistryValueNode& value) : view_(value.data()) {
    if (!isText(value.type())) return;
    converted_ = utf16BytesFromAnsi(value.data());
    view_ = converted_;
}

}  // namespace bromvale::offline
