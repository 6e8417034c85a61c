// A handler for a window that never comes: the right is refused.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
um.refuse("KZ4-TBL-05-001");
engine.SetConnection(cnx, 1);
engine.SetUM(um);
onNextWindow(function (w) { w.cancel(); });
engine.Form_Agregar_Perspectiva(0);
