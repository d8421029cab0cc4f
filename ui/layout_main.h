#pragma once
#include <span>

#include "ui/layout.h"

namespace bromvale {

// The main window as data, a table a page; frames stand in the table of their page.
[[nodiscard]] std::span<const ControlRow> layoutWindow();
[[nodiscard]] std::span<const ControlRow> layoutScan();
[[nodiscard]] std::span<const ControlRow> layoutBackup();
[[nodiscard]] std::span<const ControlRow> layoutBugReport();
[[nodiscard]] std::span<const ControlRow> layoutPrograms();
[[nodiscard]] std::span<const ControlRow> layoutOptions();
[[nodiscard]] std::span<const ControlRow> layoutCleanup();
[[nodiscard]] std::span<const ControlRow> layoutMenus();
[[nodiscard]] std::span<const ColumnRow> layoutColumns();
[[nodiscard]] std::span<const ImageRow> layoutImages();

// Every page lies on the same spot of the window.
inline constexpr Place kPagePlace{1920, 120, 8295, 6650};
// Inner size at design.
inline constexpr int kDesignWidth = 10395;
inline constexpr int kDesignHeight = 7200;

}  // namespace bromvale
