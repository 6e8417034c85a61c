// The search stand-in answers what the script sets and records what the
// engine asked; with candidates it shows its own search window.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var search = CreateObject("Host.Search");
engine.Search = search;
engine.SetConnection(cnx, 1);
assert(search.connection === cnx, "SetConnection hands the search object the connection");

search.searchAnswer = 42;
assert(engine.BuscarEntidad("Cliente") === 42);
search.searchAnswer = "17";
assert(engine.BuscarEntidad("Producto") === 17, "a text answer converts");
search.searchAnswer = "nadie";
assert(engine.BuscarEntidad("Producto") === 0, "an unconvertible answer is 0");
assert(search.searches.length === 3);
assert(search.searches[0].kind === "Cliente" && search.searches[0].flag === true);

assert(engine.InfoEntidad("Cliente", 15) === "Cliente con Sys_PK=15", "an empty description falls back");
search.describeAnswer = "Ana López";
assert(engine.InfoEntidad("Cliente", 15) === "Ana López");
var d = search.descriptions[1];
assert(d.kind === "Cliente" && d.key === "15" && d.separator === " ", JSON.stringify(d));

// With candidates, the search window lists them; the choice is the answer.
search.candidates = [{ key: 7, text: "Ana López" }, { key: 9, text: "Luis Pérez" }];
onNextWindow(function (w) {
    assert(w.objectName === "frmBuscar" && w.title === "Buscar: Cliente", w.objectName + " " + w.title);
    var entries = w.entries("lstResultados");
    assert(entries.length === 2 && entries[1].text === "Luis Pérez" && entries[1].itemData === 9);
    w.select("lstResultados", "Luis Pérez");
    w.click("Aceptar");
});
assert(engine.BuscarEntidad("Cliente") === 9);
onNextWindow(function (w) {
    w.doubleClick("lstResultados", 0);
});
assert(engine.BuscarEntidad("Cliente") === 7, "a double click chooses");
onNextWindow(function (w) { w.cancel(); });
assert(engine.BuscarEntidad("Cliente") === 0, "cancelled: 0");
print("search ok");
