// Errors the component raises reach the script as exceptions carrying VB's
// number and the component's message; errors the component traps stay
// trapped and show only in its results.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
engine.SetConnection(cnx, 1);

function caught(action) {
    try {
        action();
    } catch (e) {
        return e;
    }
    assert(false, "no error was raised");
}

// Raised to the caller.
var e = caught(function () { engine.CargarEntidad(7, 1); });
assert(e.number === 91, "CargarEntidad(7, 1): " + e.number);
assert(e.message === "Object variable or With block variable not set", e.message);
assert(e.source === "EEngine.CargarEntidad", e.source);
assert(e instanceof Error);

e = caught(function () { engine.GuardarEntidad(cnx); });
assert(e.number === 438, "an object without Save: " + e.number);

e = caught(function () { engine.SetUM(engine.CrearEntidad(VendimarBI.cMetrica)); });
assert(e.number === 13, "SetUM with no user management: " + e.number);
assert(engine.UM === null, "UM keeps its earlier value");

var search = CreateObject("Host.Search");
search.raiseError = 5;
engine.Search = search;
e = caught(function () { engine.InfoEntidad("Cliente", 3); });
assert(e.number === 5, "InfoEntidad passes the search object's error on: " + e.number);

var tablero = engine.CrearEntidad(VendimarBI.cTablero);
tablero.Nombre = "T";
assert(engine.GuardarEntidad(tablero));
var cargado = engine.CargarEntidad(VendimarBI.cTablero, tablero.Sys_PK);
e = caught(function () { cargado.Figuras.Item(1); });
assert(e.number === 5, "Item outside the collection: " + e.number);

e = caught(function () { cnx.Execute("DELETE FROM no_such_table"); });
assert(typeof e.number === "number" && e.number !== 0 && e.message.length > 0, "an SQL error: " + e.message);

e = caught(function () { CreateObject("Excel.Application"); });
assert(e.number === 429, "unknown programmatic name: " + e.number);

// Trapped by the component.
assert(engine.EliminarEntidad(VendimarBI.cMetrica, 1) === false, "no user management: the right question fails quietly");
assert(engine.Form_Agregar_Metrica(0) === 0, "no user management: nothing opens");
assert(engine.BuscarEntidad("Cliente") === 0, "a failing search gives 0");
assert(engine.CrearEntidad(7) === null && engine.CrearEntidad(0) === null);
assert(engine.EliminarEntidad(9, 1) === true, "an unknown kind deletes nothing and answers true");
var sinConexion = CreateObject("VendimarBI.EEngine");
assert(sinConexion.OpenRecordset("SELECT 1", null) === null);
assert(sinConexion.getScalar("SELECT 1", null) === 0);
assert(windowsSeen().length === 0);
print("errors ok");
