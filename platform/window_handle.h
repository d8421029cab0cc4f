#pragma once
// Windows' own types of handles, without its header: what the controls hand through and never look into.
struct HWND__;
struct HICON__;

namespace bromvale {

using WindowHandle = ::HWND__*;  // HWND
using IconHandle = ::HICON__*;   // HICON

}  // namespace bromvale
