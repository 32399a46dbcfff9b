#pragma once

namespace trovenu {

class DDB;
class SFunctionList;

/// Adds the functions of all records to the list, in their order, and gives their number. Deleted records and
/// those without a name are left out.
int AddFunctions(DDB &table, SFunctionList &list);

}  // namespace trovenu
