// The dashboard-name editor through its two entry points, accepted and cancelled.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 5);
engine.SetUM(um);

onNextWindow(function (w) {
    assert(w.objectName === "dlgTablero" && w.title === "Tablero");
    assert(w.getText("txtNombre") === "", "the name box opens empty whatever the host passed");
    w.click("cmdAceptar");
});
onNextWindow(function (m) {
    assert(m.message === "Escriba el nombre del tablero." && m.icon === "information", m.message + " " + m.icon);
    m.answer("Aceptar");
});
onNextWindow(function (w) {
    w.setText("txtNombre", "Dirección");
    w.click("cmdAceptar");
});
var key = engine.Form_Agregar_Tablero(5, "Propuesto");
assert(key > 0);
var t = engine.CargarEntidad(VendimarBI.cTablero, key);
assert(t.Nombre === "Dirección" && t.FK_Usuario === 5);

onNextWindow(function (w) {
    assert(w.getText("txtNombre") === "Dirección");
    w.setText("txtNombre", "Otro");
    w.click("cmdCancel");
});
assert(engine.Form_Editar_Tablero(key) === false);
onNextWindow(function (w) {
    w.setText("txtNombre", "Gerencia");
    w.click("cmdAceptar");
});
assert(engine.Form_Editar_Tablero(key) === true);
assert(engine.CargarEntidad(VendimarBI.cTablero, key).Nombre === "Gerencia");
onNextWindow(function (w) { w.close(); });
assert(engine.Form_Agregar_Tablero(5) === 0, "the close box cancels");
assert(um.asked.join(",") === "KZ4-TBL-01-000,KZ4-TBL-03-000,KZ4-TBL-03-000,KZ4-TBL-01-000", um.asked.join(","));
print("dashboard editor ok");
