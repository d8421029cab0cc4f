#pragma once
#include "scanner/entry_group.h"

namespace bromvale {

// Gathers the entries of one object and has them judged when the first entry of the next object arrives; that
// entry is then not buffered but asked for once more (EntryGroup::repeat). Failures are reported.
void CheckReg(const Entry& entry, EntryGroup& group, RowSink& rows);

// Lists a default value that names a class, interface or type library which no hive has. Failures are
// reported.
void CheckQuerVerbindung(const Entry& entry, EntryGroup& group, RowSink& rows);

}  // namespace bromvale
