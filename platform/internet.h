#pragma once
#include <cstdint>
#include <string>

#include "platform/process.h"

namespace bromvale {

// The functions of wininet and shdocvw that the internet services use, under their own names. A system may
// lack both libraries, so they are loaded at the first use; without them every call answers as without a
// network. All calls wait, and a server that says nothing for too long counts as gone.
using HINTERNET = void*;

// How long the head of an answer may take, and how long the server may be silent afterwards, in milliseconds.
inline DWORD internetPatience = 60000;

inline constexpr DWORD kInternetOpenDirect = 1;
inline constexpr DWORD kInternetReload = 0x80000000;
inline constexpr DWORD kQueryContentLength = 5;
inline constexpr DWORD kQueryStatusCode = 19;
inline constexpr DWORD kQueryNumber = 0x20000000;  // the answer is a DWORD

// Null where it fails.
HINTERNET InternetOpenA(const char* agent, DWORD accessType, const char* proxy, const char* bypass,
                        DWORD flags);
// Sends a GET and waits for the head of the answer, whatever its status. Null where there is no answer.
HINTERNET InternetOpenUrlA(HINTERNET session, const char* url, const char* headers, DWORD headersLength,
                           DWORD flags, std::uintptr_t context);
// Fills the buffer. With less it comes back at the end of the answer, and when a slow server has taken up the
// patience but has sent something; with nothing only at the end. FALSE when the line breaks or the server
// falls silent: what came until then is in the buffer and counted, and no more is to be had.
BOOL InternetReadFile(HINTERNET url, void* buffer, DWORD count, DWORD* read);
// Tells of the head of an answer, numbers only. FALSE where the head doesn't say it.
BOOL HttpQueryInfoA(HINTERNET url, DWORD what, void* number, DWORD* size, DWORD* index);
BOOL InternetCloseHandle(HINTERNET handle);

// Opens the system's download dialog (DoFileDownload) for the address. False where there is none.
[[nodiscard]] bool openDownloadDialog(const std::string& address);

}  // namespace bromvale
