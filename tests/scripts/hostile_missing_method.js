// EEngine has no method Publicar.
var engine = CreateObject("VendimarBI.EEngine");
engine.Publicar(1);
