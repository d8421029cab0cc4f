#pragma once
#include <cstdint>

#include "platform/process.h"

namespace bromvale {

// The functions of wininet and shdocvw that the internet services use, under their own names. A system may
// lack both libraries, so they are loaded at the first use; without them every call answers as without a
// network. All calls wait. A server that says nothing for half a minute counts as gone.
using HINTERNET = void*;

inline constexpr DWORD kInternetOpenDirect = 1;
inline constexpr DWORD kInternetReload = 0x80000000;

// Null where it fails.
HINTERNET InternetOpenA(const char* agent, DWORD accessType, const char* proxy, const char* bypass,
                        DWORD flags);
// Sends a GET and waits for the head of the answer, whatever its status. Null where there is no answer.
HINTERNET InternetOpenUrlA(HINTERNET session, const char* url, const char* headers, DWORD headersLength,
                           DWORD flags, std::uintptr_t context);
// Fills the buffer, with less only at the end of the answer or when the line breaks.
BOOL InternetReadFile(HINTERNET url, void* buffer, DWORD count, DWORD* read);
BOOL InternetCloseHandle(HINTERNET handle);

// Opens the system's download dialog for the address. Where there is none, the user is asked where to save
// the file, and it is fetched to that place.
DWORD DoFileDownload(const wchar_t* address);

}  // namespace bromvale
