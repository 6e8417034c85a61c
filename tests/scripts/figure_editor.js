// The text figure editor: text, alignment, a font and colours from the
// pickers (one pick cancelled); accepting writes into the host's object,
// cancelling leaves it alone. No right is asked.
var engine = CreateObject("VendimarBI.EEngine");
var figura = CreateObject("VendimarBI.EFigura");

onNextWindow(function (w) {
    assert(w.objectName === "dlgFig" && w.title === "Propiedades de texto");
    w.setText("cTexto", "Ventas del mes");
    w.setChecked("opt(2)", true);
    w.click("cFont");
    w.click("cColor");
    w.click("cFondo");
    w.click("cmdAceptar");
});
onNextWindow(function (f) {
    assert(f.kind === "font", f.kind);
    var elegida = f.font;
    assert(typeof elegida.family === "string");
    f.chooseFont({ family: "DejaVu Serif", size: 16, bold: true, italic: false });
});
onNextWindow(function (c) { c.chooseColor(0x000000FF); });
onNextWindow(function (c) { c.cancel(); });
assert(engine.Editar_Figura(figura) === true);
assert(figura.Texto === "Ventas del mes", figura.Texto);
assert(figura.Alineacion === VendimarBI.cCentro, "option 2 is the centre");
assert(figura.Fuente === "DejaVu Serif" && figura.Tam_fuente === 16 && figura.Negrita === true, JSON.stringify(figura));
assert(figura.Color === 0x000000FF, "red text");
assert(figura.ColorFondo === 0x00FFFFFF, "a cancelled pick keeps the white background");

// The picker opens on a plain font; a fractional size is typed into its size
// box and stored rounded halves to even: 10.5 points are 10.
onNextWindow(function (w) {
    w.click("cFont");
    w.click("cmdAceptar");
});
onNextWindow(function (f) {
    var plain = f.font;
    assert(!plain.bold && !plain.italic, "a plain font: " + JSON.stringify(plain));
    f.chooseFont({ family: "DejaVu Sans", size: 10.5 });
});
assert(engine.Editar_Figura(figura) === true);
assert(figura.Tam_fuente === 10 && figura.Negrita === false && figura.Cursiva === false, JSON.stringify(figura));

onNextWindow(function (w) {
    w.setText("cTexto", "Otro");
    w.pressKey("Escape");
});
assert(engine.Editar_Figura(figura) === false);
assert(figura.Tam_fuente === 10, "cancelled: unchanged");
print("figure editor ok");
