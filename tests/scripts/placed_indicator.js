// The placed-indicator editor writes into the host's object when accepted
// and leaves it alone when cancelled; its entity comes from the host's
// search window.
var cnx = CreateObject("ADODB.Connection");
cnx.Open(DatabaseUrl);
var engine = CreateObject("VendimarBI.EEngine");
var search = CreateObject("Host.Search");
engine.Search = search;
engine.SetConnection(cnx, 1);

var perspectiva = engine.CrearEntidad(VendimarBI.cPerspectiva);
perspectiva.Nombre = "Clientes";
perspectiva.EntidadAsociada = "Cliente";
assert(engine.GuardarEntidad(perspectiva));
var indicador = engine.CrearEntidad(VendimarBI.cIndicador);
indicador.Nombre = "Crédito";
indicador.FK_Perspectiva = perspectiva.Sys_PK;
indicador.Tipo = VendimarBI.cSemaforo;
indicador.Configuracion.Dia_Limite1 = 90;
indicador.Configuracion.Dia_Limite2 = 10;
assert(engine.GuardarEntidad(indicador));

var colocado = engine.CrearEntidad(VendimarBI.ctabindicador);
colocado.FK_Indicador = indicador.Sys_PK;

search.candidates = [{ key: 31, text: "Ana López" }];
search.describeAnswer = "Ana López";
onNextWindow(function (w) {
    assert(w.objectName === "dlgConfigIndi" && w.title === "Configuración de indicador");
    assert(w.getText("txtVal(0)") === "90" && w.getText("txtVal(4)") === "10", "the light's limits are proposed");
    assert(w.isChecked("chkInter(0)") && w.isChecked("chkInter(3)"), "every period shown");
    w.setChecked("chkInter(1)", false);
    w.select("cInicio", 2);
    w.setText("txtVal(2)", "55.5");          // the month's upper limit: Limite5
    w.click("cmdBuscar");
    assert(w.getText("lblInfo") === "Ana López", w.getText("lblInfo"));
    w.click("cmdAceptar");
});
onNextWindow(function (b) {
    assert(b.objectName === "frmBuscar" && b.title === "Buscar: Cliente", b.title);
    b.doubleClick("lstResultados", "Ana López");
});
assert(engine.Editar_Indicador_Tab(colocado) === true);
assert(colocado.FK_Entidad === 31 && colocado.Muestra_Semana === false && colocado.Muestra_Dia === true);
assert(colocado.PeriodoInicio === VendimarBI.cMes && colocado.Limite5 === 55.5 && colocado.Limite1 === 90, JSON.stringify(colocado));

onNextWindow(function (w) {
    w.setText("txtVal(0)", "1");
    w.click("cmdCancel");
});
assert(engine.Editar_Indicador_Tab(colocado) === false);
assert(colocado.Limite1 === 90, "cancelled: the object is unchanged");
print("placed indicator editor ok");
