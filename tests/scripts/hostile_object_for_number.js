// An object where the component wants a number.
var engine = CreateObject("VendimarBI.EEngine");
engine.EliminarEntidad(engine, 1);
