// Deleting a dashboard asks a question nobody answers.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);
engine.SetUM(CreateObject("Host.UserManagement"));
engine.EliminarTablero(1);
print("not reached");
