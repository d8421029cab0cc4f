#pragma once
#include "ui/list_page.h"

namespace bromvale {

// The folders to be emptied.
class CleanupPage : public PageOf<CleanupPage, ListPage> {
  public:
    explicit CleanupPage(MainWindow& ofWindow);

    Frame Frame7{&window, "Frame7"};
    CheckBox chbDelFilePermanent{&window, "chbDelFilePermanent"};
    Button cmdInhaltLöschen{&window, "cmdInhaltLöschen"};
    Button cmdOrdnerLöschen{&window, "cmdOrdnerLöschen"};
    Button cmdOrdnerWählen{&window, "cmdOrdnerWählen"};
    ListView lvwOrdnerList{&window, "lvwOrdnerList"};
    CheckBox chbTempFilesDel{&window, "chbTempFilesDel"};
    Button cmdHDDBereinigen{&window, "cmdHDDBereinigen"};
    Label lblOrdnerManuell{&window, "lblOrdnerManuell"};
    Label lblTempFileDel{&window, "lblTempFileDel"};
    Line Line2{&window, "Line2"};
    Label lblHDDBereinigen{&window, "lblHDDBereinigen"};
    MenuItem mnuPopUpOrdner{&window, "mnuPopUpOrdner"};
    MenuItem mnuPopUpOrdnerHinzufügen{&window, "mnuPopUpOrdnerHinzufügen"};
    MenuItem mnuPopUpOrdnerEntfernen{&window, "mnuPopUpOrdnerEntfernen"};
    MenuItem mnuPopUpOrdnerEinzeln{&window, "mnuPopUpOrdnerEinzeln"};
    MenuItem mnuPopUpOrdnerAlle{&window, "mnuPopUpOrdnerAlle"};

    // cleanup/
    void Ordnerliste_laden();
    void cmdOrdnerWählen_Click();
    void cmdOrdnerLöschen_Click();
    void cmdInhaltLöschen_Click();
    void mnuPopUpOrdnerEinzeln_Click();
    void cmdHDDBereinigen_Click();
    void chbTempFilesDel_Click();
    void chbDelFilePermanent_Click();
    void lvwOrdnerList_DblClick();

    [[nodiscard]] static std::span<const Row<CleanupPage>> rows();
};

}  // namespace bromvale
