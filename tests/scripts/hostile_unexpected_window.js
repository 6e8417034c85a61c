// The metric editor opens, but the script registered nothing to answer it.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
engine.Form_Agregar_Metrica(0);
print("not reached");
