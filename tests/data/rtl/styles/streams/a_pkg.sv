// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

package a_pkg; typedef enum logic [2:0] {S[0:3]=3'd1, LAST=3'd7} st_e;
 typedef struct packed { logic v; st_e st; logic [1:0][3:0] nib; } req_t;
 typedef union packed { req_t r; logic [$bits(req_t)-1:0] raw; } u_t;
 typedef struct packed signed { logic [7:0] re, im; } cplx_t;
 localparam int unsigned TABLE [4] = '{1, 2, 4, 8};
 localparam logic [3:0][7:0] PACKED_TABLE = '{8'h1, 8'h2, 8'h3, 8'h4};
 function automatic req_t mk(input logic v, st_e s = S0); mk = '{v: v, st: s, default: '0}; endfunction
 virtual class math #(int W = 4); static function logic [W-1:0] inv(logic [W-1:0] x); return ~x; endfunction endclass
 parameter string NAME = "abc";
endpackage
package b_pkg; import a_pkg::*; export a_pkg::*; typedef req_t [1:0] reqs_t; localparam W = $bits(reqs_t); endpackage
