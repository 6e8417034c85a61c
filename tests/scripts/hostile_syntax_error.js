var engine = CreateObject("VendimarBI.EEngine";
