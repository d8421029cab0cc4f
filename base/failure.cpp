#include "base/failure.h"

#include <array>

namespace bromvale {
namespace {

struct Row {
    int number;
    std::string_view text;
};

constexpr std::array kTexts{
    Row{5, "Ungültiger Prozeduraufruf oder ungültiges Argument"},
    Row{6, "Überlauf"},
    Row{7, "Nicht genügend Speicher"},
    Row{9, "Index außerhalb des gültigen Bereichs"},
    Row{11, "Division durch Null"},
    Row{13, "Typen unverträglich"},
    Row{52, "Dateiname oder -nummer falsch"},
    Row{53, "Datei nicht gefunden"},
    Row{55, "Datei bereits geöffnet"},
    Row{57, "E/A-Fehler"},
    Row{61, "Datenträger voll"},
    Row{62, "Eingabe hinter Dateiende"},
    Row{70, "Zugriff verweigert"},
    Row{71, "Datenträger nicht bereit"},
    Row{75, "Fehler beim Zugriff auf Pfad/Datei"},
    Row{76, "Pfad nicht gefunden"},
    Row{40006, "Die Verbindung ist nicht in dem Zustand, den diese Anforderung verlangt"},
    Row{35600, "Index liegt außerhalb der Grenzen"},
};

Failure& stored() {
    static Failure failure;
    return failure;
}

}  // namespace

std::string_view failureText(int number) {
    for (const Row& row : kTexts) {
        if (row.number == number) return row.text;
    }
    return "Anwendungs- oder objektdefinierter Fehler";
}

void raise(int number) {
    throw Failure{number, std::string(failureText(number))};
}

const Failure& lastFailure() {
    return stored();
}

void setLastFailure(const Failure& failure) {
    stored() = failure;
}

void clearLastFailure() {
    stored() = Failure{};
}

}  // namespace bromvale
