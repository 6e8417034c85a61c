// The indicator property dialog through its two entry points: a progress bar
// accepted with a colour picked (and another pick cancelled), an edit that
// turns it into a traffic light, and a cancelled edit.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var um = CreateObject("Host.UserManagement");
engine.SetConnection(cnx, 1);
engine.SetUM(um);
var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Ventas";
assert(engine.GuardarEntidad(perspectiva));
var metricas = ["Importe", "Unidades"].map(function (nombre) {
    var m = engine.CrearEntidad(VendimarBI.cMetrica);
    m.Nombre = nombre;
    m.FK_Perspectiva = perspectiva.Sys_PK;
    assert(engine.GuardarEntidad(m));
    return m;
});

onNextWindow(function (w) {
    assert(w.objectName === "dlgPropIndicador" && w.title === "Propiedades de indicador");
    assert(w.isChecked("opt1"), "a new indicator is a progress bar");
    var ofrecidas = w.entries("cMetrica");
    assert(ofrecidas.length === 2 && ofrecidas[0].text === "Importe" && ofrecidas[0].itemData === metricas[0].Sys_PK,
           JSON.stringify(ofrecidas));
    w.setText("cNombre", "Barra de ventas");
    w.select("cMetrica", "Importe");
    w.setText("cMin(3)", "10");
    w.setText("cMax(3)", "900");
    w.select("sTabBarra", "Semana");
    assert(w.selection("sTabBarra").index === 1);
    w.click("cColor(1)");          // opens the colour picker, answered below
    w.click("lblColorMin(0)");     // opens it again, cancelled below
    w.click("cAceptar");
});
onNextWindow(function (c) {
    assert(c.kind === "color", c.kind);
    c.chooseColor(0x00112233);
});
onNextWindow(function (c) {
    c.chooseColor("#FF00FF");      // a colour as text, red green blue
});
var key = engine.Form_Agregar_Indicador(perspectiva.Sys_PK);
assert(key > 0, "accepted: " + key);
var indicador = engine.CargarEntidad(VendimarBI.cIndicador, key);
var barra = indicador.Configuracion;
assert(indicador.Nombre === "Barra de ventas" && indicador.Tipo === VendimarBI.cBarraProgreso);
assert(barra.FK_Metrica === metricas[0].Sys_PK && barra.Ano_Min === 10 && barra.Ano_Max === 900);
assert(barra.Semana_Color === 0x00112233, "picked colour stored: " + barra.Semana_Color.toString(16));
assert(barra.Dia_ColorDebajo === 0x00FF00FF, "second pick stored: " + barra.Dia_ColorDebajo.toString(16));

// A cancelled colour pick leaves the swatch as it was.
onNextWindow(function (w) {
    var antes = w.controlProperty("cColor(2)", "colorOle");
    w.click("cColor(2)");
    assert(w.controlProperty("cColor(2)", "colorOle") === antes, "cancelled pick keeps the colour");
    w.setChecked("opt3", true);
    assert(w.isVisible("picSemaforo") && !w.isVisible("picBarra"), "the traffic light's panel shows");
    w.select("cMetrica2", "Unidades");
    var limites = ["90", "10", "80", "20", "70", "30", "60", "40"];
    limites.forEach(function (valor, i) { w.setText("cL" + (i + 1), valor); });
    w.click("cAceptar");
});
onNextWindow(function (c) { c.cancel(); });
assert(engine.Form_Editar_Indicador(key) === true);
indicador = engine.CargarEntidad(VendimarBI.cIndicador, key);
assert(indicador.Tipo === VendimarBI.cSemaforo && indicador.Configuracion.FK_Metrica === metricas[1].Sys_PK);
assert(indicador.Configuracion.Dia_Limite1 === 90 && indicador.Configuracion.Ano_Limite2 === 40);

onNextWindow(function (w) {
    assert(w.getText("cNombre") === "Barra de ventas");
    w.setText("cNombre", "Nunca guardado");
    w.cancel();
});
assert(engine.Form_Editar_Indicador(key) === false);
assert(engine.CargarEntidad(VendimarBI.cIndicador, key).Nombre === "Barra de ventas");
var vistas = windowsSeen().map(function (v) { return v.objectName; }).join(",");
assert(vistas === "dlgPropIndicador,CMD,CMD,dlgPropIndicador,CMD,dlgPropIndicador", vistas);
print("indicator editor ok");
