#include "bench/windows/recorded_calls.h"

#include <cstdio>

#include <shellapi.h>

namespace bench {
namespace {

LPCSTR narrow(const Step& step) {
    return step.text.c_str();
}
LPCWSTR wide(const Step& step) {
    return reinterpret_cast<LPCWSTR>(step.text.c_str());
}

std::string narrowed(const Step& step) {
    std::string text(2 * step.text.size() + 2, '\0');
    WideCharToMultiByte(CP_ACP, 0, wide(step), -1, text.data(), static_cast<int>(text.size()), nullptr,
                        nullptr);
    return text;
}

constexpr DWORD kAnsiName = 255;
constexpr DWORD kAnsiData = 256;

}  // namespace

std::vector<Step> readSteps() {
    std::vector<Step> steps;
    std::FILE* file = std::fopen(kRecordFile, "rb");
    if (file == nullptr) return steps;
    Record record;
    while (std::fread(&record, sizeof record, 1, file) == 1) {
        std::string text(record.length + 1, '\0');  // with the NUL of the string's own it ends UTF-16, too
        if (record.length != 0 && std::fread(text.data(), 1, record.length, file) != record.length) break;
        steps.push_back({record, std::move(text)});
    }
    std::fclose(file);
    return steps;
}

Replay::Replay(std::size_t steps, bool ansi) : ansi_(ansi) {
    keys_.reserve(steps + 1);
    files_.reserve(steps + 1);
    finalPath_ = reinterpret_cast<decltype(finalPath_)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "GetFinalPathNameByHandleW")));
}

HKEY Replay::key(std::int32_t number) const {
    if (number < 0) return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(number));
    return static_cast<std::size_t>(number) < keys_.size() ? keys_[static_cast<std::size_t>(number)]
                                                           : nullptr;
}

HANDLE Replay::file(std::int32_t number) const {
    return static_cast<std::size_t>(number) < files_.size() ? files_[static_cast<std::size_t>(number)]
                                                            : INVALID_HANDLE_VALUE;
}

void Replay::make(const Step& step) {
    if (step.record.call < Call::EnumValue) return callRegistry(step);
    if (step.record.call < Call::FindFirst)
        return step.record.call == Call::QueryInfoWide || !ansi_ ? readRegistryWide(step)
                                                                 : readRegistry(step);
    if (step.record.call < Call::OpenFile) return searchFiles(step);
    if (step.record.call < Call::Peek) return callFiles(step);
    MSG message;
    PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
}

void Replay::leaveOut(const Step& step) {
    switch (step.record.call) {
        case Call::OpenKey:
        case Call::OpenKeyEx:
        case Call::OpenKeyWide: newKey(); break;
        case Call::FindFirst:
        case Call::FindFirstWide:
        case Call::OpenFile:
        case Call::OpenFileWide: files_.push_back(INVALID_HANDLE_VALUE); break;
        default: break;
    }
}

void Replay::callRegistry(const Step& step) {
    const Record& record = step.record;
    const HKEY of = key(record.key);
    switch (record.call) {
        case Call::OpenKey: RegOpenKeyA(of, narrow(step), newKey()); break;
        case Call::OpenKeyEx: RegOpenKeyExA(of, narrow(step), 0, record.index, newKey()); break;
        case Call::OpenKeyWide: RegOpenKeyExW(of, wide(step), 0, record.index, newKey()); break;
        case Call::CloseKey: RegCloseKey(of); break;
        case Call::DeleteKey: RegDeleteKeyA(of, narrow(step)); break;
        default: break;
    }
}

// What the program asks by wide functions has the sizes of an ANSI call here.
void Replay::readRegistry(const Step& step) {
    const Record& record = step.record;
    const HKEY of = key(record.key);
    BYTE* const data = record.hasData != 0 ? data_.data() : nullptr;
    const bool asIs =
        record.call == Call::EnumValue || record.call == Call::QueryValue || record.call == Call::EnumKey;
    DWORD nameSize = asIs ? record.nameSize : kAnsiName;
    DWORD dataSize = asIs ? record.dataSize : kAnsiData;
    DWORD type = 0;
    switch (record.call) {
        case Call::EnumValue:
        case Call::EnumValueWide:
            RegEnumValueA(of, record.index, name_.data(), &nameSize, nullptr, &type, data, &dataSize);
            break;
        case Call::EnumKey:
        case Call::EnumKeyWide: RegEnumKeyA(of, record.index, name_.data(), nameSize); break;
        case Call::QueryValue: RegQueryValueExA(of, narrow(step), nullptr, &type, data, &dataSize); break;
        case Call::QueryValueWide:
            RegQueryValueExA(of, narrowed(step).c_str(), nullptr, &type, data, &dataSize);
            break;
        default: break;
    }
}

void Replay::readRegistryWide(const Step& step) {
    const Record& record = step.record;
    const HKEY of = key(record.key);
    BYTE* const data = record.hasData != 0 ? data_.data() : nullptr;
    DWORD nameSize = record.nameSize;
    DWORD dataSize = record.dataSize;
    DWORD type = 0;
    DWORD facts[4];
    FILETIME written;
    switch (record.call) {
        case Call::EnumValueWide:
            RegEnumValueW(of, record.index, wideName_.data(), &nameSize, nullptr, &type, data, &dataSize);
            break;
        case Call::EnumKeyWide:
            RegEnumKeyExW(of, record.index, wideName_.data(), &nameSize, nullptr, nullptr, nullptr, nullptr);
            break;
        case Call::QueryValueWide: RegQueryValueExW(of, wide(step), nullptr, &type, data, &dataSize); break;
        case Call::QueryInfoWide:
            RegQueryInfoKeyW(of, nullptr, nullptr, nullptr, &facts[0], nullptr, nullptr, &facts[1], &facts[2],
                             &facts[3], nullptr, &written);
            break;
        default: readRegistry(step); break;
    }
}

void Replay::searchFiles(const Step& step) {
    const HANDLE of = file(step.record.key);
    switch (step.record.call) {
        case Call::FindFirst: files_.push_back(FindFirstFileA(narrow(step), &found_)); break;
        case Call::FindFirstWide: files_.push_back(FindFirstFileW(wide(step), &wideFound_)); break;
        case Call::FindNextWide: FindNextFileW(of, &wideFound_); break;
        case Call::FindClose: FindClose(of); break;
        default: break;
    }
}

void Replay::callFiles(const Step& step) {
    const Record& record = step.record;
    const HANDLE of = file(record.key);
    DWORD size = 0;
    LONG high = 0;
    SHFILEOPSTRUCTA operation{};
    switch (record.call) {
        case Call::OpenFile:
            files_.push_back(CreateFileA(narrow(step), record.index, record.hasData, nullptr, record.nameSize,
                                         record.dataSize, nullptr));
            break;
        case Call::OpenFileWide:
            files_.push_back(CreateFileW(wide(step), record.index, record.hasData, nullptr, record.nameSize,
                                         record.dataSize, nullptr));
            break;
        case Call::FinalPath: finalPath_(of, wideName_.data(), record.nameSize, record.index); break;
        case Call::CloseFile: CloseHandle(of); break;
        case Call::WriteFile: WriteFile(of, narrow(step), record.length, &size, nullptr); break;
        case Call::SetFilePointer:
            SetFilePointer(of, static_cast<LONG>(record.nameSize), &high, record.index);
            break;
        case Call::GetFileSize: GetFileSize(of, &size); break;
        case Call::RemoveFile: DeleteFileA(narrow(step)); break;
        case Call::RemoveFolder: RemoveDirectoryA(narrow(step)); break;
        case Call::ShellOperation:
            operation.wFunc = record.index;
            operation.pFrom = narrow(step);
            operation.fFlags = static_cast<FILEOP_FLAGS>(record.nameSize);
            SHFileOperationA(&operation);
            break;
        default: break;
    }
}

}  // namespace bench
