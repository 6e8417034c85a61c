// A handler that fails: its error is reported, its window cancelled.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
onNextWindow(function (w) {
    w.setText("cNoExiste", "x");
});
engine.Form_Agregar_Perspectiva(0);
print("not reached");
