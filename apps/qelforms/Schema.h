#pragma once

namespace qel::forms {

class Database;

/// Makes a new file one of records where it `creates` one, and brings a file of an earlier version
/// up to date. One that is write-protected is read as it is: what it lacks counts as empty, for
/// this connection only. Raises the errors of files that are none of records, or of a later
/// version.
void open_schema(Database& database, bool creates);

}  // namespace qel::forms
