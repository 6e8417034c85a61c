// A window handler that never returns, with a dialog open under it.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
onNextWindow(function (w) {
    while (true) {
    }
});
engine.Form_Agregar_Perspectiva(0);
