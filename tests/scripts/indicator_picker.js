// The indicator picker: a perspective clicked shows its indicators, the one
// picked is the answer; cancelling answers 0.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);

function guardar(tipo, campos) {
    var e = engine.CrearEntidad(tipo);
    Object.keys(campos).forEach(function (k) { e[k] = campos[k]; });
    assert(engine.GuardarEntidad(e));
    return e.Sys_PK;
}
var ventas = guardar(VendimarBI.cPerspectiva, { Nombre: "Ventas" });
var compras = guardar(VendimarBI.cPerspectiva, { Nombre: "Compras" });
var diario = guardar(VendimarBI.cIndicador, { Nombre: "Diario", FK_Perspectiva: ventas });
var mensual = guardar(VendimarBI.cIndicador, { Nombre: "Mensual", FK_Perspectiva: ventas });
var proveedores = guardar(VendimarBI.cIndicador, { Nombre: "Proveedores", FK_Perspectiva: compras });

onNextWindow(function (w) {
    assert(w.objectName === "dlgSelIndicador" && w.title === "Seleccionar indicador");
    // The tree is in name order: Compras comes first and shows at once.
    var entries = w.entries("lst");
    assert(entries.length === 1 && entries[0].text === "Proveedores" && entries[0].itemData === proveedores,
           JSON.stringify(entries));
    w.select("tvw", "Ventas");
    var lista = w.entries("lst").map(function (e) { return e.text; }).join(",");
    assert(lista === "Diario,Mensual", "the perspective clicked shows its indicators: " + lista);
    w.select("lst", "Mensual");
    w.click("cmdAceptar");
});
assert(engine.Seleccionar_Indicador() === mensual);

onNextWindow(function (w) {
    w.select("tvw", "Ventas");
    w.doubleClick("lst", 0);
});
assert(engine.Seleccionar_Indicador() === diario, "a double click picks");

onNextWindow(function (w) { w.click("Cancelar"); });
assert(engine.Seleccionar_Indicador() === 0, "cancelled: 0");

// The picker opens the indicator library on the way.
onNextWindow(function (w) {
    w.click("Crear y administrar  indicadores");
    w.cancel();
});
onNextWindow(function (w) {
    assert(w.objectName === "dlgBibIndi");
    w.click("Cerrar");
});
assert(engine.Seleccionar_Indicador() === 0);
assert(um.asked.join(",") === "KZ4-TBL-03-000,KZ4-TBL-03-000,KZ4-TBL-03-000,KZ4-TBL-03-000,KZ4-TBL-06-000", um.asked.join(","));
print("indicator picker ok");
