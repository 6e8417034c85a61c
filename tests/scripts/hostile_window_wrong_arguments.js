// Window.select needs the control and the entry; the entry is missing.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
onNextWindow(function (w) {
    w.select("cDecs");
});
engine.Form_Agregar_Metrica(0);
print("not reached");
