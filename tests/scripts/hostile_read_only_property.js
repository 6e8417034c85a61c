// A recordset's EOF is read-only.
var rs = CreateObject("ADODB.Recordset");
rs.EOF = true;
