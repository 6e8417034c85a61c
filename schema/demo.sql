-- Sample library for a new installation: perspectives, metrics, indicators of
-- the three kinds and one dashboard. Portable SQL (SQLite, PostgreSQL): keys
-- come from the database and parents are found by name.

INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre) VALUES ('Ventas', '@', '*', 0);
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre) VALUES ('Inventario', 'Producto', '*', 0);
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre)
  SELECT 'Por sucursal', 'Sucursal', '*', Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_Entidad, uf_Grupos, uf_padre)
  SELECT 'Por cliente', 'Cliente', '*', Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';

INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000001}', 'Venta diaria', 'Importe vendido en el día', 'Venta del día', 2, '#,##0.00',
         'function valor(dia) { return ventas.total(dia) } // suma de los tickets cerrados',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000002}', 'Tickets', 'Número de tickets del periodo', 'Tickets', 0, '#',
         'function valor(p) { return ventas.tickets(p) } // tickets cerrados en el periodo',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva)
  SELECT '{6B1D2A10-6E2B-4C1A-9F00-000000000003}', 'Existencias', 'Unidades en almacén', 'Existencias', 0, '#',
         'function valor(p) { return almacen.existencias(p) } // unidades en almacén',
         Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Inventario';

INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Avance de ventas', 1, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Resumen de ventas', 2, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Ventas';
INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva)
  SELECT 'Semáforo de existencias', 3, Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre = 'Inventario';

INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Min, uf_Dia_Max, uf_Dia_Color, uf_Dia_ColorDebajo, uf_Dia_ColorArriba,
    uf_Semana_Min, uf_Semana_Max, uf_Semana_Color, uf_Semana_ColorDebajo, uf_Semana_ColorArriba,
    uf_Mes_Min, uf_Mes_Max, uf_Mes_Color, uf_Mes_ColorDebajo, uf_Mes_ColorArriba,
    uf_Ano_Min, uf_Ano_Max, uf_Ano_Color, uf_Ano_ColorDebajo, uf_Ano_ColorArriba)
  SELECT i.Sys_PK, m.Sys_PK, 0, 5000, 32768, 255, 16711680, 0, 35000, 32768, 255, 16711680,
         0, 150000, 32768, 255, 16711680, 0, 1800000, 32768, 255, 16711680
  FROM ut_bi_Indicador i, ut_bi_Metrica m WHERE i.uf_Nombre = 'Avance de ventas' AND m.uf_Nombre = 'Venta diaria';
INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador, uf_FK_M_Metrica1, uf_FK_M_Metrica2, uf_FK_M_Metrica3, uf_FK_M_Metrica4, uf_FK_M_Metrica5,
    uf_FK_M_Metrica6, uf_FK_M_Metrica7, uf_FK_M_Metrica8, uf_FK_M_Metrica9, uf_FK_M_Metrica10,
    uf_FK_G_Metrica1, uf_FK_G_Metrica2, uf_FK_G_Metrica3, uf_FK_G_Metrica4, uf_FK_G_Metrica5, uf_G_Titulo, uf_G_Tipo)
  SELECT i.Sys_PK, m1.Sys_PK, m2.Sys_PK, 0, 0, 0, 0, 0, 0, 0, 0, m1.Sys_PK, 0, 0, 0, 0, 'Ventas del periodo', 3
  FROM ut_bi_Indicador i, ut_bi_Metrica m1, ut_bi_Metrica m2
  WHERE i.uf_Nombre = 'Resumen de ventas' AND m1.uf_Nombre = 'Venta diaria' AND m2.uf_Nombre = 'Tickets';
INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Lim1, uf_Dia_Lim2, uf_Semana_Lim1, uf_Semana_Lim2,
    uf_Mes_Lim1, uf_Mes_Lim2, uf_Ano_Lim1, uf_Ano_Lim2, uf_Invertido)
  SELECT i.Sys_PK, m.Sys_PK, 10, 50, 10, 50, 10, 50, 10, 50, 1
  FROM ut_bi_Indicador i, ut_bi_Metrica m WHERE i.uf_Nombre = 'Semáforo de existencias' AND m.uf_Nombre = 'Existencias';

INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('Mi tablero', 1);
INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador, uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos,
    uf_l1, uf_l2, uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8)
  SELECT t.Sys_PK, i.Sys_PK, 0, 20, 60, 320, 120, 2, 15, 0, 0, 0, 0, 0, 0, 0, 0
  FROM ut_bi_Tablero t, ut_bi_Indicador i WHERE t.uf_Nombre = 'Mi tablero' AND i.uf_Nombre = 'Avance de ventas';
INSERT INTO ut_bi_Fig (uf_FK_Tablero, uf_X, uf_Y, uf_W, uf_H, uf_Tipo, uf_Fuente, uf_Texto, uf_TamFuente, uf_atrib_fuente, uf_color, uf_fondo, uf_alin)
  SELECT Sys_PK, 20, 10, 400, 40, 0, 'Arial', 'Ventas de la semana', 16, 1, 8388608, 16777215, 0
  FROM ut_bi_Tablero WHERE uf_Nombre = 'Mi tablero';
