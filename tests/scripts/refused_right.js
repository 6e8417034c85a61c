// A refused right opens nothing and deletes nothing; the user management
// stand-in records every code asked, in order.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);

um.refuse("KZ4-TBL-05-004");
assert(engine.Form_Agregar_Metrica(0) === 0, "refused: no key");
assert(windowsSeen().length === 0, "refused: no window");
assert(um.asked.length === 1 && um.asked[0] === "KZ4-TBL-05-004", "asked: " + um.asked);

var metrica = engine.CrearEntidad(VendimarBI.cMetrica);
metrica.Nombre = "Protegida";
assert(engine.GuardarEntidad(metrica));
um.refuse("KZ4-TBL-05-006");
assert(engine.EliminarEntidad(VendimarBI.cMetrica, metrica.Sys_PK) === false, "refused delete answers false");
assert(engine.CargarEntidad(VendimarBI.cMetrica, metrica.Sys_PK) !== null, "and deletes nothing");

um.refuseAll();
um.clearAsked();
assert(engine.Seleccionar_Indicador() === 0);
assert(engine.Form_Editar_Tablero(1) === false);
assert(um.asked.join(",") === "KZ4-TBL-03-000,KZ4-TBL-03-000", "the picker and the dashboard editor ask the same right: " + um.asked);

um.grant("KZ4-TBL-05-006");
assert(engine.EliminarEntidad(VendimarBI.cMetrica, metrica.Sys_PK) === true, "granted again");
assert(windowsSeen().length === 0);
print("refused right ok");
