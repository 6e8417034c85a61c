// The metric editor through its two entry points, accepted and cancelled.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);
var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Ventas";
assert(engine.GuardarEntidad(perspectiva));

onNextWindow(function (w) {
    assert(w.objectName === "dlgDato" && w.title === "Propiedades de métrica");
    assert(w.getText("cCode").indexOf("//Lenguaje: javascript") === 0, "a new metric starts from the template");
    assert(!w.isEnabled("cGUID"));
    var formatos = w.entries("cFormat").map(function (e) { return e.text; });
    assert(formatos[0] === "#" && formatos.indexOf("#,#.00") > 0, formatos.join(" "));
    w.setText("cNombre", "Venta diaria");
    w.setText("cTitulo", "Venta");
    w.setText("cDescrip", "Importe vendido");
    w.select("cDecs", "2");
    w.select("cFormat", "#,#.00");
    w.click("cAceptar");
});
var key = engine.Form_Agregar_Metrica(perspectiva.Sys_PK);
assert(key > 0, "accepted: " + key);
var m = engine.CargarEntidad(VendimarBI.cMetrica, key);
assert(m.Nombre === "Venta diaria" && m.Titulo === "Venta" && m.Descripcion === "Importe vendido");
assert(m.Decimales === 2 && m.Formato === "#,#.00" && m.FK_Perspectiva === perspectiva.Sys_PK);

onNextWindow(function (w) {
    assert(w.getText("cNombre") === "Venta diaria");
    assert(w.getText("cGUID") === m.Sys_GUID, "the GUID is shown");
    w.setText("cNombre", "Cambiada");
    w.cancel();
});
assert(engine.Form_Editar_Metrica(key) === false);
assert(engine.CargarEntidad(VendimarBI.cMetrica, key).Nombre === "Venta diaria");

onNextWindow(function (w) {
    w.setText("cTitulo", "Venta del día");
    w.click("cAceptar");
});
assert(engine.Form_Editar_Metrica(key) === true);
assert(engine.CargarEntidad(VendimarBI.cMetrica, key).Titulo === "Venta del día");

onNextWindow(function (w) { w.click("cCancelar"); });
assert(engine.Form_Agregar_Metrica(perspectiva.Sys_PK) === 0);
print("metric editor ok");
