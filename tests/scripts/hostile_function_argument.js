// A script function cannot stand in for a component object.
var engine = CreateObject("VendimarBI.EEngine");
engine.GuardarEntidad(function Save() { return true; });
