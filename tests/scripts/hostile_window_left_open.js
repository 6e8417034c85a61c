// The handler types a name but neither accepts nor cancels: when it returns
// the dialog is still open, and no handler is left for it.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
onNextWindow(function (w) {
    w.setText("cNombre", "A medias");
});
engine.Form_Agregar_Perspectiva(0);
