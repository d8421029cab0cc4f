#pragma once
#include <windows.h>

#include <cstddef>

// Memory in the process that owns a window, freed at the end of the scope.
class RemoteMemory {
  public:
    RemoteMemory(HWND owner, std::size_t size, DWORD protection = PAGE_READWRITE) {
        DWORD id = 0;
        GetWindowThreadProcessId(owner, &id);
        process_ = OpenProcess(
            PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE | PROCESS_CREATE_THREAD, FALSE, id);
        if (process_) address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, protection);
    }
    ~RemoteMemory() {
        if (address_) VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
        if (process_) CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    bool writeBytes(const void* bytes, std::size_t size, std::size_t offset = 0) {
        return WriteProcessMemory(process_, at(offset), bytes, size, nullptr) != FALSE;
    }
    template <typename T>
    void write(const T& value) {
        writeBytes(&value, sizeof value);
    }
    template <typename T>
    T read() const {
        T value{};
        ReadProcessMemory(process_, address_, &value, sizeof value, nullptr);
        return value;
    }
    HANDLE process() const { return process_; }
    void* at(std::size_t offset) const { return static_cast<char*>(address_) + offset; }
    LPARAM parameter() const { return reinterpret_cast<LPARAM>(address_); }

  private:
    HANDLE process_ = nullptr;
    void* address_ = nullptr;
};
